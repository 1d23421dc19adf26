import QtQuick
import Corvane

// A button, plain or prominent.
Pressable {
    id: root

    property bool prominent: false
    /// Who takes the keys when this button goes while it has them.
    property Item heir: null

    readonly property color inked: root.prominent ? Theme.accentText : Theme.text

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.sized(24), implicitContentHeight + topPadding + bottomPadding)
    leftPadding: Theme.sized(11)
    rightPadding: Theme.sized(11)
    topPadding: Theme.sized(4)
    bottomPadding: Theme.sized(4)
    opacity: root.enabled ? 1 : 0.45
    Accessible.description: root.enabled ? "" : qsTr("Not available now")

    onVisibleChanged: {
        if (!root.visible && root.activeFocus && root.heir)
            root.heir.forceActiveFocus(Qt.TabFocusReason);
    }

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        font: root.font
        color: root.inked
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.radius
        color: root.prominent ? (root.down ? Qt.darker(Theme.accentFill, 1.15) : Theme.accentFill)
            : root.down ? Theme.controlPressed : Theme.control
        border.width: root.prominent ? 0 : 1
        border.color: Theme.controlEdge

        FocusRing {
            shown: root.visualFocus
        }
    }
}

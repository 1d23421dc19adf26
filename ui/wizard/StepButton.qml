import QtQuick
import QtQuick.Templates as T
import Corvane

// One step in the sidebar.
T.AbstractButton {
    id: root

    required property badge badge
    required property string spoken
    required property bool current

    implicitHeight: Math.max(implicitContentHeight, Theme.sized(16)) + 12
    leftPadding: 8
    rightPadding: 8
    spacing: 8
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: root.spoken
    Accessible.selected: root.current
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: event => root.pressByKey(event)
    Keys.onEnterPressed: event => root.pressByKey(event)

    // A key that is held down presses once.
    function pressByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.clicked();
    }

    contentItem: Row {
        spacing: root.spacing
        Accessible.ignored: true

        Symbol {
            name: root.badge.symbol
            color: Theme.tint(root.badge.tint)
            width: Theme.sized(16)
            height: width
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            objectName: root.objectName + "Label"
            width: root.availableWidth - Theme.sized(16) - root.spacing
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            textFormat: Text.PlainText
            font.family: Theme.family
            font.pixelSize: Theme.body.pixelSize
            font.bold: root.current
            color: Theme.text
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: 6
        color: root.current ? Theme.faded(Theme.accent, 0.15) : "transparent"

        FocusRing {
            anchors.margins: 0
            radius: 6
            shown: root.visualFocus
        }
    }
}

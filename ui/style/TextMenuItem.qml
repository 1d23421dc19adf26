import QtQuick
import QtQuick.Templates as T
import Corvane

// One item of a menu.
T.MenuItem {
    id: root

    property bool offered: true

    width: parent ? parent.width : 0
    implicitHeight: root.offered ? Theme.sized(24) : 0
    visible: root.offered
    leftPadding: Theme.sized(10)
    rightPadding: Theme.sized(10)
    font: Theme.body
    opacity: root.enabled ? 1 : 0.45
    Accessible.name: root.text
    Accessible.role: Accessible.MenuItem
    Accessible.onPressAction: if (root.enabled) root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        font: root.font
        color: root.highlighted ? Theme.accentText : Theme.text
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.radius - 1
        color: root.highlighted ? Theme.accentFill : "transparent"
    }
}

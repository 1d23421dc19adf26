import QtQuick
import QtQuick.Templates as T
import Corvane

// One choice of a pop-up button.
T.ItemDelegate {
    id: root

    required property bool chosen

    implicitHeight: Theme.sized(24)
    leftPadding: Theme.sized(24)
    rightPadding: Theme.sized(10)
    font: Theme.body
    Accessible.name: root.text
    Accessible.role: Accessible.ListItem
    Accessible.selected: root.chosen
    Accessible.onPressAction: root.clicked()

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

        Symbol {
            visible: root.chosen
            name: "checkmark"
            color: root.highlighted ? Theme.accentText : Theme.text
            width: Theme.sized(12)
            height: width
            x: Theme.sized(7)
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}

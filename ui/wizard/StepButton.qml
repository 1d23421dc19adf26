import QtQuick
import Corvane

// One step in the sidebar.
Pressable {
    id: root

    required property badge badge
    required property string spoken
    required property bool current

    implicitHeight: Math.max(implicitContentHeight, Theme.sized(16)) + 12
    leftPadding: 8
    rightPadding: 8
    spacing: 8
    Accessible.name: root.spoken
    Accessible.selected: root.current

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

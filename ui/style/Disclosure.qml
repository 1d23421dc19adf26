import QtQuick
import Corvane

// A heading that shows and hides what is below it.
Column {
    id: root

    required property string title
    required property bool open
    default property alias content: body.data

    signal asked(bool open)

    spacing: 6

    Pressable {
        id: header
        objectName: root.objectName + "Header"
        implicitWidth: implicitContentWidth + 8
        implicitHeight: implicitContentHeight + 6
        onClicked: root.asked(!root.open)
        Accessible.name: root.title
        Accessible.description: root.open ? qsTr("Shown") : qsTr("Hidden")

        contentItem: Row {
            spacing: 4
            Accessible.ignored: true

            Symbol {
                name: "chevron.right"
                color: Theme.secondaryText
                width: Theme.sized(11)
                height: width
                rotation: root.open ? 90 : 0
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                text: root.title
                textFormat: Text.PlainText
                font: Theme.body
                color: Theme.text
                Accessible.ignored: true
            }
        }
        FocusRing {
            shown: header.visualFocus
        }
    }
    Column {
        id: body
        width: root.width
        visible: root.open
    }
}

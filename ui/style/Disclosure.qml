import QtQuick
import QtQuick.Templates as T
import Corvane

// A heading that shows and hides what stands beneath it.
Column {
    id: root

    required property string title
    required property bool open
    default property alias content: body.data

    signal asked(bool open)

    spacing: 6

    T.AbstractButton {
        id: header
        objectName: root.objectName + "Header"
        implicitWidth: implicitContentWidth + 8
        implicitHeight: implicitContentHeight + 6
        focusPolicy: Qt.StrongFocus
        onClicked: root.asked(!root.open)
        Keys.onReturnPressed: root.asked(!root.open)
        Keys.onEnterPressed: root.asked(!root.open)
        Accessible.role: Accessible.Button
        Accessible.name: root.title
        Accessible.onPressAction: root.asked(!root.open)
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

import QtQuick
import QtQuick.Layouts
import Corvane

// One line for the user that stays until it is dismissed.
Rectangle {
    id: root

    implicitHeight: row.implicitHeight + 16
    color: Theme.tinted
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Notice")

    RowLayout {
        id: row
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: 12
        anchors.rightMargin: 12

        BodyText {
            objectName: "noticeText"
            Layout.fillWidth: true
            activeFocusOnTab: true
            text: App.notice
        }
        PushButton {
            objectName: "dismissButton"
            text: qsTr("Dismiss")
            onClicked: Commands.dismissNotice()
        }
    }
}

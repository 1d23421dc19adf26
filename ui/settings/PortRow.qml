import QtQuick
import Corvane

// The port of the admin page.
Item {
    id: root

    implicitHeight: picker.implicitHeight

    BodyText {
        text: qsTr("Admin page port")
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
    }
    Picker {
        id: picker
        objectName: "webPortPicker"
        anchors.right: parent.right
        label: qsTr("Admin page port")
        enabled: !Looks.operating
        choices: Looks.webPorts
        value: App.webPort.toString()
        onPicked: choice => Commands.changeWebPort(parseInt(choice))
    }
}

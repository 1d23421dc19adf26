pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// Which ports are taken, by whom, and what can be done about it.
GroupBox {
    id: root

    objectName: "portsPanel"
    title: qsTr("Ports in use")
    visible: Looks.takenPorts.count > 0
    Component.onCompleted: Looks.showPorts()
    onVisibleChanged: if (visible) Looks.showPorts()

    Repeater {
        model: Looks.takenPorts

        Column {
            id: taken

            required property row row

            width: parent ? parent.width : 0
            spacing: 2

            Text {
                width: parent.width
                text: taken.row.title
                textFormat: Text.PlainText
                font: Theme.body
                color: Theme.text
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            NoteText {
                width: parent.width
                text: taken.row.detail
            }
        }
    }
    BodyText {
        width: parent.width
        visible: Looks.webPortTaken && Looks.freePorts.length === 0
        text: Looks.noWebPortFree
        color: Theme.redText
    }
    Row {
        visible: Looks.webPortTaken && Looks.freePorts.length > 0
        spacing: Theme.gap

        BodyText {
            text: qsTr("Use another port for the admin page:")
            anchors.verticalCenter: parent.verticalCenter
        }
        Picker {
            objectName: "freePortPicker"
            label: qsTr("Use another port for the admin page:")
            enabled: !Looks.operating
            choices: Looks.freePorts
            value: ""
            placeholder: qsTr("Choose")
            onPicked: choice => Commands.changeWebPort(parseInt(choice))
        }
    }
    NoteText {
        width: parent.width
        visible: Looks.dnsPortTaken
        text: qsTr("Port 53 cannot be moved: the Mac's DNS needs it. Stop the program listed above, then run the checks again.")
    }
}

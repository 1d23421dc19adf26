import QtQuick
import Corvane

// The version in use and the way to a newer one.
GroupBox {
    id: root

    title: qsTr("Updates")

    BodyText {
        objectName: "pinnedVersion"
        width: parent.width
        text: qsTr("Pinned Pi-hole version: %1").arg(App.pinnedTag)
    }
    NoteBeside {
        width: parent.width
        about: "version"
    }
    NoteText {
        width: parent.width
        text: qsTr("Updating saves a backup first, changes the pinned version, pulls the image and recreates the container. Data volumes are never deleted.")
    }
    Flow {
        width: parent.width
        spacing: Theme.gap / 2

        TestButton {
            objectName: "checkForUpdates"
            title: qsTr("Check for updates")
            busy: Looks.askingForUpdates
            allowed: !Looks.operating
            onPressed: Commands.checkForUpdates()
        }
        Row {
            spacing: Theme.gap

            PushButton {
                objectName: "updateButton"
                text: qsTr("Back up and update")
                enabled: Looks.canUpdate
                onClicked: Commands.performUpdate()
            }
            PushButton {
                objectName: "bringBackButton"
                text: qsTr("Bring version %1 back").arg(App.wayBack)
                visible: App.wayBack.length > 0
                enabled: Looks.canChangePihole
                onClicked: Commands.bringBack()
            }
            UnderWay {
                objectName: "updateUnderWay"
                height: Theme.sized(24)
                words: Looks.updateInPreparation
            }
        }
    }
    MessageText {
        id: updateVerdict
        objectName: "updateMessage"
        width: parent.width
        text: App.updateMessage

        BringUp {
            item: updateVerdict
            words: App.updateMessage
        }
    }
    OperationLogView {
        objectName: "maintLog"
        width: parent.width
        op: App.maintOp
    }
}

import QtQuick
import Corvane

// A site does not load: what Pi-hole blocks while it is loaded again, and the way to allow it.
GroupBox {
    id: root

    property bool showsOlder: false

    objectName: "repairBox"
    title: qsTr("Something does not load?")

    RepairLooks {
        id: looks
        repair: App.repair
    }
    NoteText {
        width: parent.width
        text: App.repair.watching
            ? qsTr("Load the page again now. The names that Pi-hole blocks from here on stand below, the newest first.")
            : qsTr("See which names Pi-hole blocks while the page loads, and allow the one that it needs.")
    }
    PushButton {
        id: watch
        objectName: "repairSwitch"
        text: App.repair.watching ? qsTr("Done") : qsTr("Show what is blocked")
        onClicked: Commands.watchBlocked(!App.repair.watching)
    }
    Row {
        width: parent.width
        visible: App.repair.message.length > 0
        spacing: Theme.gap

        MessageText {
            objectName: "repairMessage"
            width: parent.width - undo.width - parent.spacing
            text: App.repair.message
            color: Theme.text
            anchors.verticalCenter: parent.verticalCenter
        }
        PushButton {
            id: undo
            objectName: "repairUndo"
            visible: App.repair.undoName.length > 0
            heir: watch
            text: qsTr("Undo")
            Accessible.name: qsTr("Undo: block %1 again").arg(App.repair.undoName)
            onClicked: Commands.takeBack(App.repair.undoName)
        }
    }
    Column {
        width: parent.width
        visible: App.repair.watching
        spacing: Theme.gap

        MessageText {
            objectName: "noNames"
            width: parent.width
            text: looks.noNames
        }
        BlockedNames {
            objectName: "newNames"
            width: parent.width
            rows: looks.newNames
            more: looks.moreNew
            heir: undo
        }
        Disclosure {
            objectName: "olderNames"
            width: parent.width
            visible: looks.olderNames.count > 0
            title: qsTr("Blocked in the ten minutes before")
            open: root.showsOlder
            onAsked: open => root.showsOlder = open

            BlockedNames {
                width: parent.width
                rows: looks.olderNames
                more: looks.moreOlder
                heir: undo
            }
        }
    }
    Permissions {
        objectName: "permissions"
        width: parent.width
        visible: looks.permissions.count > 0
        rows: looks.permissions
        heir: watch
    }
}

import QtQuick
import Corvane

// Puts the old DNS servers back; says how that went.
Column {
    id: root

    property bool showsMessage: true

    spacing: 6

    TestButton {
        objectName: root.objectName
        title: qsTr("Restore my old settings")
        busy: Looks.restoringDNS
        onPressed: Commands.restoreOldSettings()
    }
    NoteText {
        objectName: root.objectName + "Message"
        width: root.width
        visible: root.showsMessage && App.dnsMessage.length > 0
        text: App.dnsMessage
    }
}

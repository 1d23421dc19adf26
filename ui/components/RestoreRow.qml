import QtQuick
import QtQuick.Layouts
import Corvane

// The way back to the old DNS servers, and beside it how that went.
RowLayout {
    id: root

    spacing: Theme.gap

    RestoreButton {
        objectName: root.objectName
        place: Place.SetUp
    }
    MessageText {
        objectName: root.objectName + "Message"
        Layout.fillWidth: true
        text: Looks.bannerTellsDNS ? "" : App.dnsMessage
    }
}

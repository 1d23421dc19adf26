import QtQuick
import Corvane

// The one step that changes this Mac's network settings.
StepScaffold {
    id: root

    title: qsTr("Point this Mac at Pi-hole")
    subtitle: qsTr("This is the only step that changes your Mac's network settings. DNS becomes 127.0.0.1 (Pi-hole) first and 1.1.1.1 as backup. Your old values are saved first and can be restored at any time.")
    Component.onCompleted: Commands.dnsAppeared()

    BodyText {
        objectName: "serversInUse"
        width: parent.width
        text: Looks.serversInUse
    }
    StatusNote {
        width: parent.width
    }
    ServiceList {
        objectName: "services"
        width: parent.width
    }
    PiholeOnlyBox {
        width: parent.width
    }
    Column {
        width: parent.width

        Flow {
            width: parent.width
            spacing: Theme.gap / 2

            TestButton {
                objectName: "applyDns"
                title: qsTr("Change DNS...")
                busy: Looks.applyingDNS
                allowed: Looks.canChangeDNS
                onPressed: Commands.applyDNS()
            }
            RestoreButton {
                objectName: "dnsRestore"
                place: Place.SetUp
            }
            TestButton {
                objectName: "reloadServices"
                title: qsTr("Reload list")
                busy: Looks.loadingServices
                onPressed: Commands.loadServices()
            }
        }
        MessageRoom {
            width: parent.width

            MessageText {
                objectName: "dnsMessage"
                width: parent.width
                text: Looks.bannerTellsDNS ? "" : App.dnsMessage
                color: Theme.text
            }
            MessageText {
                objectName: "pickServiceHint"
                width: parent.width
                visible: Looks.mustPickService
                text: qsTr("Pick at least one network service.")
            }
        }
    }
    GroupBox {
        width: parent.width
        title: qsTr("Mac DNS test")

        TestRow {
            objectName: "systemTest"
            width: parent.width
            label: Looks.systemVerdict.length > 0 ? Looks.systemVerdict : qsTr("Not tested in this session.")
            subject: qsTr("Mac DNS test")
            badge: Looks.systemBadge
            tested: Looks.systemVerdict.length > 0
            busy: Looks.testingSystem
            onPressed: Commands.runSystemTest()
        }
        MessageText {
            id: systemVerdict
            objectName: "systemTestDetail"
            width: parent.width
            text: App.systemTestDetail

            BringUp {
                item: systemVerdict
                words: App.systemTestDetail
            }
        }
        NoteBeside {
            width: parent.width
            about: "system"
        }
        MessageText {
            objectName: "resolverWarning"
            width: parent.width
            text: Looks.resolverWarning
        }
    }
}

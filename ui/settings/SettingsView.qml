import QtQuick
import QtQuick.Layouts
import Corvane

// The few lasting choices, removal, and what this program is.
ColumnLayout {
    id: root

    spacing: 0
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Settings")

    NoticeLine {
        Layout.fillWidth: true
        visible: App.notice.length > 0
    }
    ReportSheet {
        parent: root
        width: root.width
        height: root.height
        covers: root.visible
    }
    ScrollArea {
        Layout.fillWidth: true
        Layout.fillHeight: true
        padding: 12
        spacing: 10

        GroupBox {
            width: parent.width
            title: qsTr("General")

            Toggle {
                objectName: "launchAtLoginSwitch"
                width: parent.width
                text: qsTr("Launch Corvane at login")
                on: App.launchAtLogin
                onAsked: value => Commands.setLaunchAtLogin(value)
            }
            Divider {
                width: parent.width
            }
            Toggle {
                objectName: "autostartColimaSwitch"
                width: parent.width
                text: qsTr("Start Colima at login")
                enabled: !Looks.operating
                on: App.autostartColima
                onAsked: value => Commands.changeAutostart(value)
            }
            OperationLogView {
                objectName: "settingsInstallLog"
                width: parent.width
                op: App.installOp
                own: Looks.changesAutostart
                passing: true
            }
            Divider {
                width: parent.width
            }
            StartsAgain {
                objectName: "startsAgainSwitch"
                width: parent.width
            }
            ComebackHistory {
                objectName: "comebackHistoryBox"
                width: parent.width
            }
        }
        GroupBox {
            width: parent.width
            title: qsTr("Ports")

            PortRow {
                width: parent.width
            }
            NoteText {
                width: parent.width
                text: qsTr("Changing it recreates the container. Your data is kept.")
            }
            NoteText {
                width: parent.width
                text: qsTr("DNS: 53 (TCP and UDP) on 127.0.0.1. Fixed, because the Mac's DNS needs it.")
            }
            OperationLogView {
                objectName: "settingsMaintLog"
                width: parent.width
                op: App.maintOp
                own: Looks.movesPort
                passing: true
            }
        }
        GroupBox {
            width: parent.width
            title: qsTr("Remove")

            TestButton {
                objectName: "removePihole"
                title: qsTr("Remove Pi-hole...")
                busy: Looks.restoringDNS
                allowed: Looks.canRemovePihole
                onPressed: Commands.removePihole()
            }
            NoteText {
                width: parent.width
                text: qsTr("Removes the container 'pihole' and the volumes 'pihole_etc' and 'pihole_dnsmasq', after restoring your saved DNS settings.")
            }
        }
        GroupBox {
            width: parent.width
            title: qsTr("About")

            BodyText {
                width: parent.width
                text: qsTr("Corvane sets up Pi-hole in Docker on Colima and points this Mac's DNS at it. It protects this Mac only, not other devices on your network. Nothing is sent to a cloud service.")
            }
            NoteText {
                width: parent.width
                text: qsTr("Pi-hole is a separate project (EUPL licence); this app only runs its official Docker image.")
            }
            Divider {
                width: parent.width
            }
            TestButton {
                objectName: "makeReport"
                title: qsTr("Save a report...")
                busy: Looks.makingReport
                onPressed: Commands.makeReport()
            }
            NoteText {
                width: parent.width
                text: qsTr("For whoever helps you. You read it before it is saved. Corvane sends it nowhere.")
            }
        }
    }
}

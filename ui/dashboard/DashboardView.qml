import QtQuick
import Corvane

// The everyday screen: the state, today's numbers, the actions, the log, updates and backups.
ScrollArea {
    id: root

    objectName: "dashboard"
    padding: 20
    spacing: 18

    Column {
        width: parent.width

        StatusRow {
            width: parent.width
        }
        MessageRoom {
            width: parent.width

            StatusNote {
                width: parent.width
            }
            ComebackNews {
                width: parent.width
                visible: text.length > 0 && !App.showDeadDNSBanner
            }
            ListsHelp {
                id: listsHelp
                width: parent.width
            }
            BrowserRuleNote {
                width: parent.width
                visible: text.length > 0 && !App.showDeadDNSBanner
            }
        }
    }
    TodayBox {
        width: parent.width
    }
    ActionRows {
        width: parent.width
    }
    DayBox {
        width: parent.width
    }
    RepairBox {
        width: parent.width
    }
    ListsBox {
        width: parent.width
        toldElsewhere: listsHelp.visible
    }
    GroupBox {
        width: parent.width
        title: qsTr("Logs")

        LogsPanel {
            width: parent.width
            logHeight: Math.max(272, root.height - 584)
        }
    }
    UpdatesBox {
        width: parent.width
    }
    GroupBox {
        width: parent.width
        title: qsTr("Backup and restore (Teleporter)")

        Row {
            spacing: Theme.gap

            PushButton {
                objectName: "backUpButton"
                text: qsTr("Back up...")
                enabled: !Looks.operating
                onClicked: Commands.exportBackup()
            }
            PushButton {
                objectName: "restoreBackupButton"
                text: qsTr("Restore...")
                enabled: !Looks.operating
                onClicked: Commands.importBackup()
            }
            UnderWay {
                objectName: "backupUnderWay"
                anchors.verticalCenter: parent.verticalCenter
                words: Looks.backupUnderWay
            }
        }
    }
}

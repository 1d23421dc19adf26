import QtQuick
import QtQuick.Layouts
import Corvane

// What was proven in this session, and how to undo it.
StepScaffold {
    id: root

    title: App.setupSucceeded ? qsTr("Pi-hole is running and this Mac uses it") : qsTr("Almost there")
    subtitle: App.setupSucceeded ? qsTr("Primary DNS: Pi-hole, backup: 1.1.1.1") : qsTr("Success is only claimed when the Pi-hole test (step %1) and the Mac DNS test (step %2) both passed in this session.").arg(Looks.stepNumber(WizardStep.Pihole)).arg(Looks.stepNumber(WizardStep.DNS))

    CheckList {
        objectName: "outcomes"
        width: parent.width
        rows: Looks.outcomes
    }
    NoteText {
        objectName: "provedBrowsers"
        width: parent.width
        visible: text.length > 0
        text: Looks.provedBrowsers
    }
    StatusNote {
        width: parent.width
    }
    ListsHelp {
        width: parent.width
    }
    GroupBox {
        width: parent.width

        RowLayout {
            width: parent.width
            spacing: Theme.gap

            BodyText {
                text: qsTr("Admin password:")
            }
            BodyText {
                objectName: "adminPassword"
                Layout.fillWidth: true
                activeFocusOnTab: text.length > 0
                font: Theme.fixedBody
                text: App.adminPassword
                Accessible.description: qsTr("Admin password")
            }
            CopyButton {
                objectName: "copyAdminPasswordButton"
                enabled: App.adminPassword.length > 0
                Accessible.name: qsTr("Copy the admin password")
                onClicked: Commands.copyAdminPassword()
            }
        }
    }
    Row {
        spacing: Theme.gap

        PushButton {
            objectName: "doneOpenDashboardButton"
            text: qsTr("Open dashboard")
            enabled: App.answering
            onClicked: Commands.openDashboard()
        }
        PushButton {
            objectName: "goToMainWindowButton"
            prominent: true
            text: qsTr("Go to the main window")
            onClicked: Commands.leaveWizard()
        }
    }
    GroupBox {
        width: parent.width
        title: qsTr("How to undo")

        BodyText {
            width: parent.width
            text: qsTr("Press 'Restore my old settings' (here, in step %1 or %2, or in the main window) to put your previous DNS servers back. 'Remove Pi-hole' in Settings also restores them first.").arg(Looks.stepNumber(WizardStep.Welcome)).arg(Looks.stepNumber(WizardStep.DNS))
        }
        RestoreRow {
            objectName: "doneRestore"
            width: parent.width
        }
        RestoreScriptNote {
            objectName: "doneRestoreScript"
            width: parent.width
        }
    }
    BodyText {
        width: parent.width
        text: qsTr("This protects this Mac only, not other devices on your network.")
        color: Theme.secondaryText
    }
}

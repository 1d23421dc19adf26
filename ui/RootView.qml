import QtQuick
import QtQuick.Layouts
import Corvane

// The content of the main window: header, banner, notice, and the set-up or the dashboard.
ColumnLayout {
    id: root

    property bool showSettings: false

    spacing: 0
    enabled: !root.showSettings // below the sheet nothing is within reach, by whatever means

    RowLayout {
        Layout.fillWidth: true
        Layout.margins: 12
        spacing: Theme.gap

        Symbol {
            name: "shield.lefthalf.filled"
            color: Theme.accent
            Layout.preferredWidth: Theme.sized(20)
            Layout.preferredHeight: Theme.sized(20)
        }
        Text {
            text: qsTr("Corvane")
            textFormat: Text.PlainText
            font: Theme.headline
            color: Theme.text
            Layout.fillWidth: true
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        PushButton {
            objectName: "toggleWizardButton"
            text: App.showWizard ? qsTr("Main window") : qsTr("Setup wizard")
            onClicked: Commands.toggleWizard()
        }
        PushButton {
            objectName: "settingsButton"
            text: qsTr("Settings")
            onClicked: root.showSettings = true
        }
    }
    Divider {
        Layout.fillWidth: true
    }
    DeadDNSBanner {
        objectName: "deadDNSBanner"
        Layout.fillWidth: true
        visible: App.showDeadDNSBanner
    }
    NoticeLine {
        Layout.fillWidth: true
        visible: App.notice.length > 0
    }
    Loader {
        objectName: "content"
        Layout.fillWidth: true
        Layout.fillHeight: true
        focus: true
        sourceComponent: App.showWizard ? wizard : dashboard
    }

    Component {
        id: wizard

        WizardView {}
    }
    Component {
        id: dashboard

        DashboardView {}
    }

    SettingsSheet {
        shown: root.showSettings
        onCloseAsked: root.showSettings = false
    }
}

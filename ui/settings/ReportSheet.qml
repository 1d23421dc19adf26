import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// The report as it would be saved, before it is saved.
T.Popup {
    id: root

    /// Whether the settings that it covers are in sight: they are shown in a window and in a sheet.
    required property bool covers

    modal: true
    focus: true
    padding: 12
    visible: root.covers && App.report.length > 0
    closePolicy: T.Popup.CloseOnEscape
    onClosed: Commands.dropReport()

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        radius: Theme.boxRadius
        color: Theme.window
    }
    contentItem: ColumnLayout {
        spacing: 10
        Accessible.role: Accessible.Dialog
        Accessible.name: qsTr("Report")

        Headline {
            Layout.fillWidth: true
            text: qsTr("This is what is saved")
        }
        NoteText {
            Layout.fillWidth: true
            text: qsTr("Names of sites, networks and people, addresses and passwords are taken out. Look whether anything is left that you do not want to show.")
        }
        ReportText {
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        RowLayout {
            spacing: Theme.gap

            Item {
                Layout.fillWidth: true
            }
            PushButton {
                objectName: "dropReportButton"
                text: qsTr("Close")
                onClicked: root.close()
            }
            PushButton {
                objectName: "saveReportButton"
                prominent: true
                text: qsTr("Save...")
                onClicked: Commands.saveReport()
            }
        }
    }
}

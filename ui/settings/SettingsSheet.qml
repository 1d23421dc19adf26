import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// The settings as a sheet of the main window.
T.Popup {
    id: root

    required property bool shown
    /// A report covers the whole sheet and has a button of its own.
    readonly property bool closable: App.report.length === 0

    signal closeAsked

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    width: 520
    height: 520
    modal: true
    focus: true
    visible: root.shown
    closePolicy: T.Popup.CloseOnEscape
    onClosed: root.closeAsked()

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        radius: Theme.boxRadius
        color: Theme.window
        border.width: 1
        border.color: Theme.divider
    }
    contentItem: ColumnLayout {
        spacing: 0
        Keys.onReturnPressed: root.closeAsked()
        Keys.onEnterPressed: root.closeAsked()

        SettingsView {
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
        Divider {
            Layout.fillWidth: true
            visible: root.closable
        }
        RowLayout {
            Layout.margins: 12
            visible: root.closable

            Item {
                Layout.fillWidth: true
            }
            PushButton {
                objectName: "closeSettingsButton"
                prominent: true
                text: qsTr("Close")
                onClicked: root.closeAsked()
            }
        }
    }
}

import QtQuick
import QtQuick.Layouts
import Corvane

// Where the script is that puts the old DNS servers back without Corvane; takes no room while there is none.
RowLayout {
    id: root

    spacing: Theme.gap
    visible: App.restoreScript.length > 0

    ColumnLayout {
        Layout.fillWidth: true
        spacing: 2

        NoteText {
            Layout.fillWidth: true
            text: qsTr("Even without Corvane, this script puts your old DNS servers back. Open it in Finder:")
        }
        NoteText {
            objectName: root.objectName + "Path"
            Layout.fillWidth: true
            activeFocusOnTab: true
            text: App.restoreScript
            color: Theme.text
        }
    }
    PushButton {
        objectName: root.objectName + "Button"
        Layout.alignment: Qt.AlignTop
        text: qsTr("Show in Finder")
        onClicked: Commands.showRestoreScript()
    }
}

import QtQuick
import Corvane

// The other lengths of a pause.
PushButton {
    id: root

    property bool byKeys: false

    text: qsTr("Pause for...")
    Accessible.role: Accessible.ButtonMenu
    onClicked: {
        root.byKeys = root.visualFocus;
        menu.popup(root, 0, root.height + 3);
    }

    ChoiceMenu {
        id: menu
        objectName: "pauseMenu"
        label: root.text
        onClosed: {
            if (root.byKeys)
                root.forceActiveFocus(Qt.TabFocusReason);
        }
        implicitWidth: Theme.sized(190)

        TextMenuItem {
            objectName: "pauseHalfMinute"
            text: qsTr("30 seconds")
            onTriggered: Commands.pauseFor(PauseLength.HalfMinute)
        }
        TextMenuItem {
            objectName: "pauseFiveMinutes"
            text: qsTr("5 minutes")
            onTriggered: Commands.pauseFor(PauseLength.FiveMinutes)
        }
        TextMenuItem {
            objectName: "pauseOneHour"
            text: qsTr("1 hour")
            onTriggered: Commands.pauseFor(PauseLength.OneHour)
        }
        TextMenuItem {
            objectName: "pauseUntilMorning"
            text: qsTr("Until tomorrow morning")
            onTriggered: Commands.pauseFor(PauseLength.UntilMorning)
        }
    }
}

import QtQuick
import Corvane

Window {
    id: root

    signal settingsRequested
    signal quitRequested

    title: qsTr("Corvane Settings")
    width: 520
    height: 520
    minimumWidth: 520
    maximumWidth: 520
    minimumHeight: 520
    maximumHeight: 520
    color: Theme.window

    Shortcut {
        sequences: ["Ctrl+W", "Escape", "Ctrl+."]
        onActivated: root.close()
    }
    Shortcut {
        sequences: ["Ctrl+Q"]
        onActivated: root.quitRequested()
    }

    SettingsView {
        anchors.fill: parent
    }
}

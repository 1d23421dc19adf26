import QtQuick
import Corvane

Window {
    id: root

    signal settingsRequested
    signal quitRequested

    title: qsTr("Corvane")
    width: 980
    height: 720
    minimumWidth: 860
    minimumHeight: 620
    color: Theme.window

    Shortcut {
        sequences: ["Ctrl+W"]
        onActivated: root.close()
    }
    Shortcut {
        sequences: ["Ctrl+,"]
        onActivated: root.settingsRequested()
    }
    Shortcut {
        sequences: ["Ctrl+Q"]
        onActivated: root.quitRequested()
    }

    RootView {
        anchors.fill: parent
    }
}

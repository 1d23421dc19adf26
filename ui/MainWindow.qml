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

    // What closes the window closes its sheet first.
    onClosing: close => {
        close.accepted = !view.showSettings;
        view.showSettings = false;
    }

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
        id: view
        anchors.fill: parent
    }
}

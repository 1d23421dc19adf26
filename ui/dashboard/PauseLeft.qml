import QtQuick
import Corvane

// What is left of a pause, counted down while it is in sight.
Text {
    id: root

    height: Theme.sized(24)
    visible: countdown.left.length > 0
    text: qsTr("Paused: %1 left").arg(countdown.left)
    textFormat: Text.PlainText
    font: Theme.callout
    color: Theme.secondaryText
    verticalAlignment: Text.AlignVCenter
    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("Blocking is paused: %1 left").arg(countdown.spoken)

    PauseCountdown {
        id: countdown
        app: App
        looked: root.Window.window !== null && root.Window.visibility !== Window.Minimized && root.Window.visibility !== Window.Hidden
    }
}

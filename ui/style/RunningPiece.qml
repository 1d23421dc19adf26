import QtQuick
import Corvane

// A piece that runs along its bar, again and again.
Item {
    id: root

    clip: true

    Rectangle {
        id: piece
        width: root.width * 0.3
        height: root.height
        radius: height / 2
        color: Theme.accent
    }
    NumberAnimation {
        target: piece
        property: "x"
        from: -piece.width
        to: root.width
        duration: 1400
        loops: Animation.Infinite
        running: root.visible
    }
}

import QtQuick
import Corvane

// A piece that runs along its bar, again and again.
Item {
    id: root

    /// How far the piece has come, from 0 to 1: its places follow the bar, whose width comes late.
    property real way: 0

    clip: true

    Rectangle {
        id: piece
        x: Looks.reducesMotion ? 0 : root.way * (root.width + width) - width
        width: Looks.reducesMotion ? root.width : root.width * 0.3
        height: root.height
        radius: height / 2
        color: Theme.accentMark
    }
    // The still way to say the same.
    SequentialAnimation {
        running: root.visible && Looks.reducesMotion
        loops: Animation.Infinite
        onStopped: piece.opacity = 1

        OpacityAnimator {
            target: piece
            from: 1
            to: 0.4
            duration: 1200
        }
        OpacityAnimator {
            target: piece
            from: 0.4
            to: 1
            duration: 1200
        }
    }
    NumberAnimation {
        target: root
        property: "way"
        from: 0
        to: 1
        duration: 1400
        loops: Animation.Infinite
        running: root.visible && !Looks.reducesMotion
    }
}

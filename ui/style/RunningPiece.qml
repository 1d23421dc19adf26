import QtQuick
import Corvane

// A piece that runs along its bar, again and again.
Item {
    id: root

    clip: true

    Rectangle {
        id: piece
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
        target: piece
        property: "x"
        from: -piece.width
        to: root.width
        duration: 1400
        loops: Animation.Infinite
        running: root.visible && root.width > 0 && !Looks.reducesMotion
        onStopped: piece.x = 0
    }
}

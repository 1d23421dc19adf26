import QtQuick
import Corvane

// One of the eight strokes of a spinning indicator.
Rectangle {
    id: root

    required property int index
    readonly property real wheel: root.parent ? root.parent.width : 0

    width: Math.max(2, root.wheel / 9)
    height: root.wheel * 0.27
    radius: root.width / 2
    x: (root.wheel - root.width) / 2
    color: Theme.secondaryText
    opacity: 0.2 + 0.8 * root.index / 7
    transform: Rotation {
        angle: root.index * 45
        origin.x: root.width / 2
        origin.y: root.wheel / 2
    }
}

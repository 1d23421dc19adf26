import QtQuick
import Corvane

// The picture of a state: a symbol in its colour, or a spinning indicator while work goes on.
Item {
    id: root

    required property badge badge

    implicitWidth: Theme.sized(16)
    implicitHeight: Theme.sized(16)
    Accessible.role: Accessible.Graphic
    Accessible.name: root.badge.spoken

    Symbol {
        anchors.fill: parent
        visible: !root.badge.spins
        name: root.badge.symbol
        color: Theme.tint(root.badge.tint)
    }
    Spinner {
        anchors.fill: parent
        visible: root.badge.spins
        Accessible.ignored: true
    }
}

import QtQuick
import Corvane

// Shows which control the keyboard speaks to.
Rectangle {
    id: root

    required property bool shown

    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.radius + 3
    color: "transparent"
    border.width: 3
    border.color: Theme.accentMark
    visible: root.shown
}

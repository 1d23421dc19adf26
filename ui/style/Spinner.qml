import QtQuick
import Corvane

// A small spinning progress indicator.
Item {
    id: root

    property string label: qsTr("Working")

    implicitWidth: Theme.sized(16)
    implicitHeight: Theme.sized(16)
    Accessible.role: Accessible.Indicator
    Accessible.name: root.label

    Item {
        id: wheel
        anchors.fill: parent
        Accessible.ignored: true

        Repeater {
            model: 8

            Rectangle {
                id: petal

                required property int index

                width: Math.max(2, root.width / 9)
                height: root.height * 0.27
                radius: petal.width / 2
                x: (root.width - petal.width) / 2
                y: 0
                color: Theme.secondaryText
                opacity: 0.2 + 0.8 * petal.index / 7
                transform: Rotation {
                    angle: petal.index * 45
                    origin.x: petal.width / 2
                    origin.y: root.height / 2
                }
            }
        }
    }

    Timer {
        interval: 100
        repeat: true
        running: root.visible
        onTriggered: wheel.rotation = (wheel.rotation + 45) % 360
    }
}

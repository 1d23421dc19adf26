pragma ComponentBehavior: Bound

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

            SpinnerPetal {}
        }
    }

    Timer {
        interval: 100
        repeat: true
        running: root.visible
        onTriggered: wheel.rotation = (wheel.rotation + 45) % 360
    }
}

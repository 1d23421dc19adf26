pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// The steps: what is done, what is current, and a way to each.
Rectangle {
    id: root

    color: Theme.sidebar
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Steps")

    ScrollArea {
        anchors.fill: parent
        focus: false
        padding: 12
        spacing: 4

        Repeater {
            model: Looks.steps

            StepButton {
                required property row row
                required property int index

                objectName: "step" + (index + 1)
                width: parent ? parent.width : 0
                badge: row.badge
                text: row.title
                spoken: row.detail
                current: App.step === index
                onClicked: Commands.go(index)
            }
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// What the colours and patterns of the picture mean.
Flow {
    id: root

    required property DayView day

    spacing: 2 * Theme.gap

    component Meaning: Row {
        id: meaning

        property alias sample: place.data
        required property string label

        spacing: 6

        Item {
            id: place
            width: Theme.sized(14)
            height: Theme.sized(12)
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: meaning.label
            textFormat: Text.PlainText
            font: Theme.callout
            color: Theme.secondaryText
        }
    }

    Meaning {
        label: qsTr("Allowed")
        sample: Rectangle {
            anchors.fill: parent
            radius: 2
            color: Theme.allowed
        }
    }
    Meaning {
        label: qsTr("Blocked")
        sample: Rectangle {
            anchors.fill: parent
            radius: 2
            color: Theme.blocked
        }
    }
    Repeater {
        model: root.day.meanings

        Meaning {
            id: state

            required property bandMeaning modelData

            label: state.modelData.label
            sample: BandSwatch {
                anchors.fill: parent
                protection: state.modelData.protection
                color: Theme.protection(state.modelData.protection)
            }
        }
    }
}

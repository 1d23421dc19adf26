import QtQuick
import Corvane

// Today's numbers, and beneath them what Pi-hole's API had to say. A message of one line finds its room kept, so that the
// buttons below stay under the hand that pressed them.
Item {
    id: root

    /// A part of the message's room is the gap that stands between boxes anyway.
    readonly property int gap: 8

    implicitHeight: box.implicitHeight - root.gap + Math.max(Math.ceil(room.height), message.visible ? message.implicitHeight : 0)

    GroupBox {
        id: box

        readonly property real share: (width - 2 * Theme.padding - 3 * numbers.spacing) / 4

        width: root.width
        title: qsTr("Today")

        Row {
            id: numbers
            spacing: 12

            Statistic {
                objectName: "queries"
                width: box.share
                value: Looks.queries
                label: qsTr("Queries")
            }
            Statistic {
                objectName: "blocked"
                width: box.share
                value: Looks.blocked
                label: qsTr("Blocked")
            }
            Statistic {
                objectName: "blockedPercent"
                width: box.share
                value: Looks.blockedPercent
                label: qsTr("Blocked %")
            }
            Statistic {
                objectName: "blocking"
                width: box.share
                value: Looks.blockingText
                label: qsTr("Blocking")
            }
        }
    }
    FontMetrics {
        id: room
        font: Theme.callout
    }
    MessageText {
        id: message
        objectName: "apiMessage"
        x: 4
        y: box.implicitHeight + 3
        width: root.width - 8
        text: App.apiMessage
        color: Theme.orangeText
    }
}

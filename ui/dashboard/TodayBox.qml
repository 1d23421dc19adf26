pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// Today's numbers, and below them what Pi-hole's API had to say.
Column {
    id: root

    GroupBox {
        id: box

        readonly property real share: (width - 2 * Theme.padding - (Looks.counters.count - 1) * numbers.spacing) / Looks.counters.count

        width: root.width
        title: qsTr("Today")

        Row {
            id: numbers
            spacing: 12

            Repeater {
                model: Looks.counters

                Statistic {
                    required property row row

                    objectName: row.id
                    width: box.share
                    value: row.detail
                    label: row.title
                }
            }
        }
    }
    MessageRoom {
        width: root.width

        MessageText {
            id: apiMessage
            objectName: "apiMessage"
            width: parent.width
            text: App.apiMessage
            color: Theme.orangeText

            BringUp {
                item: apiMessage
                words: Looks.logTrouble // is pressed for further down
                upwards: true
            }
        }
        NoteBeside {
            width: parent.width
            about: "api"
        }
    }
}

import QtQuick
import Corvane

// Today's numbers, and beneath them what Pi-hole's API had to say.
Column {
    id: root

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

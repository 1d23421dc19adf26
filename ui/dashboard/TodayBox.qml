import QtQuick
import Corvane

// Today's numbers.
GroupBox {
    id: root

    title: qsTr("Today")

    Row {
        id: numbers

        readonly property real share: (width - 3 * spacing) / 4

        width: parent.width
        spacing: 12

        Statistic {
            objectName: "queries"
            width: numbers.share
            value: Looks.queries
            label: qsTr("Queries")
        }
        Statistic {
            objectName: "blocked"
            width: numbers.share
            value: Looks.blocked
            label: qsTr("Blocked")
        }
        Statistic {
            objectName: "blockedPercent"
            width: numbers.share
            value: Looks.blockedPercent
            label: qsTr("Blocked %")
        }
        Statistic {
            objectName: "blocking"
            width: numbers.share
            value: Looks.blockingText
            label: qsTr("Blocking")
        }
    }
    MessageText {
        objectName: "apiMessage"
        width: parent.width
        text: App.apiMessage
        color: Theme.orangeText
    }
}

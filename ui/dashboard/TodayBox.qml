import QtQuick
import Corvane

// Today's numbers.
GroupBox {
    id: root

    readonly property real share: (width - 2 * Theme.padding - 3 * numbers.spacing) / 4

    title: qsTr("Today")

    Row {
        id: numbers
        spacing: 12

        Statistic {
            objectName: "queries"
            width: root.share
            value: Looks.queries
            label: qsTr("Queries")
        }
        Statistic {
            objectName: "blocked"
            width: root.share
            value: Looks.blocked
            label: qsTr("Blocked")
        }
        Statistic {
            objectName: "blockedPercent"
            width: root.share
            value: Looks.blockedPercent
            label: qsTr("Blocked %")
        }
        Statistic {
            objectName: "blocking"
            width: root.share
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

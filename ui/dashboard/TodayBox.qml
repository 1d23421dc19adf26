import QtQuick
import QtQuick.Layouts
import Corvane

// Today's numbers.
GroupBox {
    id: root

    title: qsTr("Today")

    RowLayout {
        width: parent.width
        spacing: 12

        Statistic {
            objectName: "queries"
            value: Looks.queries
            label: qsTr("Queries")
        }
        Statistic {
            objectName: "blocked"
            value: Looks.blocked
            label: qsTr("Blocked")
        }
        Statistic {
            objectName: "blockedPercent"
            value: Looks.blockedPercent
            label: qsTr("Blocked %")
        }
        Statistic {
            objectName: "blocking"
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

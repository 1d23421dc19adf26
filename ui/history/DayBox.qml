import QtQuick
import Corvane

// The last 24 hours as a picture, the band of this Mac's protection, and the names blocked most.
GroupBox {
    id: root

    readonly property real inner: width - 2 * Theme.padding
    readonly property real namesWidth: Theme.sized(210)
    readonly property real picture: inner - chart.axisWidth - 3 * Theme.padding - namesWidth

    title: qsTr("The last 24 hours")

    DayView {
        id: dayView
        app: App
    }
    Text {
        objectName: "dayText"
        width: root.inner
        height: Theme.sized(20)
        text: chart.current >= 0 ? chart.currentText : dayView.text
        textFormat: Text.PlainText
        font: Theme.body
        color: Theme.text
        elide: Text.ElideRight
    }
    Row {
        spacing: 3 * Theme.padding

        DayChart {
            id: chart
            day: dayView
            room: root.picture
        }
        MostBlocked {
            width: root.inner - chart.width - parent.spacing
            day: dayView
        }
    }
    DayLegend {
        width: root.inner
        day: dayView
    }
    BodyText {
        objectName: "protectionText"
        width: root.inner
        height: Math.max(implicitHeight, Theme.sized(17))
        text: dayView.protection
    }
    NoteText {
        objectName: "dayNote"
        width: root.inner
        height: Math.max(implicitHeight, Theme.sized(16))
        text: dayView.leftOut
    }
    MessageText {
        objectName: "dayTrouble"
        width: root.inner
        text: dayView.trouble
        color: Theme.orangeText
    }
}

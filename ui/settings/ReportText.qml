import QtQuick
import Corvane

// The text of the report, which is read from its top.
Rectangle {
    id: root

    radius: Theme.radius
    color: Theme.logBackground
    border.width: 1
    border.color: Theme.boxEdge

    LogTextView {
        id: report
        objectName: "reportText"
        anchors.fill: parent
        anchors.margins: 6
        label: qsTr("Report")
        text: App.report
    }
    Timer {
        interval: 0 // once its lines are there
        running: root.visible
        onTriggered: report.canvas.scrollTo(0)
    }
}

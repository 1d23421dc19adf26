import QtQuick
import QtQuick.Layouts
import Corvane

// A running or ended operation: its title, how it goes, and its live log.
Rectangle {
    id: root

    required property OperationRunner op
    property bool showDetails: false

    /// Whether its end is shown here. Another screen's operation keeps controls off here too, so it is shown while it
    /// runs; how it ended is shown where it began.
    property bool own: true
    /// Whether a good end needs no word.
    property bool passing: false

    visible: root.op.running || (root.op.ended && root.own && !(root.passing && root.op.succeeded))
    implicitHeight: column.implicitHeight + 20
    radius: Theme.radius + 2
    color: Theme.tinted
    border.width: 1
    border.color: Theme.boxEdge

    ColumnLayout {
        id: column
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 10
        spacing: 8

        RowLayout {
            Headline {
                Layout.fillWidth: true
                text: root.op.title
            }
            PushButton {
                objectName: root.objectName + "Cancel"
                visible: root.op.running
                text: qsTr("Cancel")
                onClicked: root.op.cancel()
            }
        }
        ProgressLine {
            Layout.fillWidth: true
            visible: root.op.running
            label: root.op.title
        }
        OperationResult {
            Layout.fillWidth: true
            visible: root.op.ended
            succeeded: root.op.succeeded
            failure: root.op.failureSentence
        }
        NoteText {
            objectName: root.objectName + "Cause"
            Layout.fillWidth: true
            visible: root.op.ended && text.length > 0
            text: root.op.failureLine
        }
        Disclosure {
            objectName: root.objectName + "Details"
            Layout.fillWidth: true
            title: root.op.running ? qsTr("Live log") : qsTr("Show details")
            open: root.showDetails
            onAsked: open => root.showDetails = open

            LogTextView {
                objectName: root.objectName + "Log"
                width: parent.width
                height: 160
                op: root.op
                label: qsTr("Log of: %1").arg(root.op.title)
            }
        }
    }
}

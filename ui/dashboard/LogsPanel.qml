import QtQuick
import QtQuick.Layouts
import Corvane

// The container's log, loaded once or followed live.
Column {
    id: root

    property int logHeight: 272

    spacing: 8

    RowLayout {
        width: root.width
        spacing: Theme.gap

        TestButton {
            objectName: "refreshLog"
            title: qsTr("Refresh")
            busy: Looks.loadingLog
            allowed: !App.following
            onPressed: Commands.loadLogs()
        }
        Toggle {
            objectName: "followSwitch"
            text: qsTr("Follow")
            spacing: 6
            on: App.following
            onAsked: value => Commands.follow(value)
        }
        Item {
            Layout.fillWidth: true
        }
        CopyButton {
            objectName: "copyLogButton"
            enabled: Looks.hasLog
            onClicked: Commands.copyLog()
        }
        PushButton {
            objectName: "saveLogButton"
            text: qsTr("Save...")
            enabled: Looks.hasLog
            onClicked: Commands.saveLogs()
        }
    }
    Rectangle {
        width: root.width
        height: root.logHeight
        radius: Theme.radius
        color: Theme.logBackground
        border.width: 1
        border.color: Theme.boxEdge

        LogTextView {
            objectName: "piholeLog"
            anchors.fill: parent
            anchors.margins: 6
            op: App.following ? App.followOp : null
            text: App.following ? "" : App.logText
            label: qsTr("Log of the Pi-hole container")
            placeholder: qsTr("Press Refresh to load the last 300 lines (docker logs --tail 300 pihole).")
        }
    }
}

import QtQuick
import QtQuick.Layouts
import Corvane

// A name that Pi-hole blocked, why, and the two ways to allow it.
ListedRow {
    id: root

    required property row row
    property Item heir: null

    RowLayout {
        width: root.width
        spacing: Theme.gap / 2

        NameAndNote {
            Layout.fillWidth: true
            name: root.row.title
            note: root.row.detail
        }
        PushButton {
            objectName: "allowHour"
            visible: root.row.enabled
            heir: root.heir
            text: qsTr("Allow 1 hour")
            Accessible.name: qsTr("Allow %1 for 1 hour").arg(root.row.title)
            onClicked: Commands.allow(root.row.id, false)
        }
        PushButton {
            objectName: "allowAlways"
            visible: root.row.enabled
            heir: root.heir
            text: qsTr("Always")
            Accessible.name: qsTr("Allow %1 always").arg(root.row.title)
            onClicked: Commands.allow(root.row.id, true)
        }
    }
}

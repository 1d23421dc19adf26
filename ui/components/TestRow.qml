import QtQuick
import QtQuick.Layouts
import Corvane

// A named test with its result and its button.
RowLayout {
    id: root

    required property string label
    required property badge badge
    required property bool tested
    required property bool busy
    /// What is tested, where the label says how it went.
    property string subject: root.label

    signal pressed

    spacing: Theme.gap

    BodyText {
        objectName: root.objectName + "Label"
        text: root.label
        Layout.fillWidth: true
    }
    TestButton {
        objectName: root.objectName
        title: qsTr("Test")
        label: qsTr("Test: %1").arg(root.subject)
        busy: root.busy
        leads: true
        onPressed: root.pressed()

        StateIcon {
            objectName: root.objectName + "Result"
            anchors.centerIn: parent
            visible: root.tested && !root.busy
            badge: root.badge
        }
    }
}

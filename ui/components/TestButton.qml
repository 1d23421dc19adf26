import QtQuick
import Corvane

// A button that is off, with a spinning indicator beside it, while its action runs.
Row {
    id: root

    required property string title
    required property bool busy
    property bool allowed: true
    property string label: root.title

    signal pressed

    spacing: Theme.gap

    PushButton {
        objectName: root.objectName + "Button"
        text: root.title
        enabled: !root.busy && root.allowed
        Accessible.name: root.label
        onClicked: root.pressed()
    }
    Spinner {
        visible: root.busy
        anchors.verticalCenter: parent.verticalCenter
        label: qsTr("%1: running").arg(root.label)
    }
}

import QtQuick
import Corvane

// A button that is off, with a spinning indicator beside it, while its action runs. The indicator's place is kept free,
// so that nothing moves when it comes; what is there otherwise is up to the owner.
Row {
    id: root

    required property string title
    required property bool busy
    property bool allowed: true
    property string label: root.title
    property alias prominent: button.prominent
    /// Whether the indicator comes in front of the button.
    property bool leads: false
    default property alias idle: beside.data

    signal pressed

    spacing: Theme.gap / 2
    layoutDirection: root.leads ? Qt.RightToLeft : Qt.LeftToRight

    PushButton {
        id: button
        objectName: root.objectName + "Button"
        text: root.title
        enabled: !root.busy && root.allowed
        Accessible.name: root.label
        onClicked: root.pressed()
    }
    Item {
        id: beside
        width: Theme.sized(16)
        height: button.height

        Spinner {
            objectName: root.objectName + "Spinner"
            visible: root.busy
            anchors.centerIn: parent
            label: qsTr("%1: running").arg(root.label)
        }
    }
}

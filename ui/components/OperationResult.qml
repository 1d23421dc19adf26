import QtQuick
import QtQuick.Layouts
import Corvane

// How an operation ended.
RowLayout {
    id: root

    required property bool succeeded
    required property string failure

    spacing: 6

    Symbol {
        visible: root.succeeded
        name: "checkmark.circle.fill"
        color: Theme.green
        Layout.preferredWidth: Theme.sized(16)
        Layout.preferredHeight: Theme.sized(16)
        Layout.alignment: Qt.AlignTop
        Accessible.role: Accessible.Graphic
        Accessible.name: qsTr("Succeeded")
    }
    BodyText {
        objectName: "operationResult"
        Layout.fillWidth: true
        activeFocusOnTab: true
        text: root.succeeded ? qsTr("Finished.") : root.failure
        color: root.succeeded ? Theme.text : Theme.redText
    }
}

import QtQuick
import QtQuick.Layouts
import Corvane

// A question with two answers, in a window of its own.
Window {
    id: root

    required property string heading
    required property string message
    required property string acceptLabel
    required property string rejectLabel
    required property bool warning

    signal answered(bool accepted)

    title: qsTr("Corvane")
    width: Theme.sized(420)
    height: Math.min(column.implicitHeight + 40, 640)
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Theme.window
    flags: Qt.Dialog
    modality: Qt.ApplicationModal

    // The answer that the default button gives.
    readonly property bool byDefault: !root.warning

    Shortcut {
        sequences: ["Escape", "Ctrl+."]
        onActivated: root.answered(false)
    }

    // Return goes to the default button wherever the focus is, unless another button has it.
    function answerByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.answered(root.byDefault);
    }

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 20
        spacing: 12
        Keys.forwardTo: [scroll]
        Keys.onReturnPressed: event => root.answerByKey(event)
        Keys.onEnterPressed: event => root.answerByKey(event)
        Accessible.role: Accessible.Dialog
        Accessible.name: root.heading
        Accessible.description: root.message

        Symbol {
            name: root.warning ? "exclamationmark.triangle.fill" : "shield.lefthalf.filled"
            color: root.warning ? Theme.orange : Theme.accent
            Layout.preferredWidth: Theme.sized(48)
            Layout.preferredHeight: Theme.sized(48)
            Layout.alignment: Qt.AlignHCenter
        }
        BodyText {
            objectName: "alertHeading"
            text: root.heading
            font: Theme.headline
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }
        ScrollArea {
            id: scroll
            focus: false
            padding: 0
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredHeight: message.height

            BodyText {
                id: message
                objectName: "alertMessage"
                width: root.width - 40
                text: root.message
            }
        }
        RowLayout {
            spacing: 10
            Layout.topMargin: 4

            PushButton {
                objectName: "alertReject"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                prominent: !root.byDefault
                focus: !root.byDefault
                text: root.rejectLabel
                onClicked: root.answered(false)
            }
            PushButton {
                objectName: "alertAccept"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                prominent: root.byDefault
                focus: root.byDefault
                text: root.acceptLabel
                onClicked: root.answered(true)
            }
        }
    }
}

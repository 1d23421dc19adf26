import QtQuick
import Corvane

// The label of a switch and a remark below it, with room kept free for the switch.
Item {
    id: root

    required property string text
    required property string note
    required property real reserved

    // The natural width of the texts: one that followed the width they get would make a layout chase itself.
    implicitWidth: Math.ceil(Math.max(labelWidth.advanceWidth, noteWidth.advanceWidth)) + root.reserved
    implicitHeight: texts.implicitHeight

    TextMetrics {
        id: labelWidth
        font: Theme.body
        text: root.text
    }
    TextMetrics {
        id: noteWidth
        font: Theme.callout
        text: root.note
    }

    Column {
        id: texts
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.rightMargin: root.reserved
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Text {
            width: parent.width
            text: root.text
            textFormat: Text.PlainText
            font: Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            visible: root.note.length > 0
            text: root.note
            textFormat: Text.PlainText
            font: Theme.callout
            color: Theme.secondaryText
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}

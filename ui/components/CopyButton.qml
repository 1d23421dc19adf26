import QtQuick
import Corvane

// Copies something, and says so for a moment without changing its size.
PushButton {
    id: root

    property bool copied: false

    text: root.copied ? qsTr("Copied") : qsTr("Copy")
    implicitWidth: Math.ceil(Math.max(before.advanceWidth, after.advanceWidth)) + leftPadding + rightPadding
    Accessible.name: qsTr("Copy")
    onClicked: {
        root.copied = true;
        moment.restart();
    }

    Timer {
        id: moment
        interval: 1500
        onTriggered: root.copied = false
    }
    TextMetrics {
        id: before
        font: root.font
        text: qsTr("Copy")
    }
    TextMetrics {
        id: after
        font: root.font
        text: qsTr("Copied")
    }
}

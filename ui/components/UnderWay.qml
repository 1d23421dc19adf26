import QtQuick
import Corvane

// What has begun and shows no step yet, beside the button that began it.
Row {
    id: root

    required property string words

    visible: root.words.length > 0
    spacing: Theme.gap / 2

    Spinner {
        anchors.verticalCenter: parent.verticalCenter
        label: root.words
    }
    BodyText {
        objectName: root.objectName + "Words"
        anchors.verticalCenter: parent.verticalCenter
        text: root.words
        color: Theme.secondaryText
    }
}

import QtQuick
import Corvane

// One number with its name beneath. A long value is set smaller instead of being fitted: Qt's fitting changes the size
// that layouts ask for, and they would chase each other for ever.
Column {
    id: root

    required property string value
    required property string label

    spacing: 1
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label + ": " + root.value

    Item {
        width: root.width
        height: measure.height

        FontMetrics {
            id: measure
            font: Theme.title
        }
        Text {
            objectName: root.objectName + "Value"
            anchors.bottom: parent.bottom
            width: parent.width
            text: root.value
            font: root.value.length > 12 ? Theme.headline : Theme.title
            elide: Text.ElideRight
            color: Theme.text
            Accessible.ignored: true
        }
    }
    Text {
        width: root.width
        text: root.label
        font: Theme.callout
        elide: Text.ElideRight
        color: Theme.secondaryText
        Accessible.ignored: true
    }
}

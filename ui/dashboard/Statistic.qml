import QtQuick
import Corvane

// One number with its name below.
Column {
    id: root

    required property string value
    required property string label

    spacing: 1
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label + ": " + root.value

    Text {
        objectName: root.objectName + "Value"
        width: root.width
        height: Theme.sized(28)
        text: root.value
        textFormat: Text.PlainText
        font: Theme.title
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.sized(12)
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        color: Theme.text
        Accessible.ignored: true
    }
    Text {
        width: root.width
        text: root.label
        textFormat: Text.PlainText
        font: Theme.callout
        color: Theme.secondaryText
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}

import QtQuick
import QtQuick.Layouts
import Corvane

// One number with its name beneath.
ColumnLayout {
    id: root

    required property string value
    required property string label

    Layout.fillWidth: true
    Layout.preferredWidth: 1
    spacing: 1
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label + ": " + root.value

    Text {
        objectName: root.objectName + "Value"
        Layout.fillWidth: true
        text: root.value
        font: Theme.title
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.sized(13)
        color: Theme.text
        Accessible.ignored: true
    }
    Text {
        Layout.fillWidth: true
        text: root.label
        font: Theme.callout
        color: Theme.secondaryText
        Accessible.ignored: true
    }
}

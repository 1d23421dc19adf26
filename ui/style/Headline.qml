import QtQuick
import Corvane

// The heading of a group.
Text {
    id: root

    textFormat: Text.PlainText
    font: Theme.bodyBold
    color: Theme.text
    wrapMode: Text.Wrap
    Accessible.role: Accessible.Heading
    Accessible.name: root.text
}

import QtQuick
import Corvane

// The frame of every step: a large title, a subtitle, and the step's content in a scrolling column.
ScrollArea {
    id: root

    required property string title
    required property string subtitle

    Column {
        width: parent.width
        spacing: 6

        Text {
            objectName: "stepTitle"
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            font: Theme.largeTitle
            color: Theme.text
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        BodyText {
            objectName: "stepSubtitle"
            width: parent.width
            text: root.subtitle
            color: Theme.secondaryText
        }
    }
}

import QtQuick
import Corvane

// What is true beside a message or a row whose own words say less.
MessageText {
    id: root

    /// What it is shown beside, as the model names it.
    required property string about

    objectName: root.about + "Note"
    text: App.notes[root.about] ?? ""
    color: Theme.text
}

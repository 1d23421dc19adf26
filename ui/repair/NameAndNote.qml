import QtQuick
import Corvane

// A name, and below it what is to be known about it.
Column {
    id: root

    required property string name
    required property string note

    spacing: 2

    BodyText {
        width: root.width
        text: root.name
        wrapMode: Text.WrapAnywhere
    }
    NoteText {
        width: root.width
        text: root.note
        wrapMode: Text.Wrap
        activeFocusOnTab: true
    }
}

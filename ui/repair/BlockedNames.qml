import QtQuick
import Corvane

// A list of names that were blocked, and how many were left out.
Column {
    id: root

    required property RowList rows
    required property string more

    spacing: Theme.gap

    Repeater {
        model: root.rows

        BlockedNameRow {}
    }
    NoteText {
        width: root.width
        visible: root.more.length > 0
        text: root.more
    }
}

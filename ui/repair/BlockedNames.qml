pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// A list of names that were blocked, and how many were left out.
Column {
    id: root

    required property RowList rows
    required property string more
    property Item heir: null

    spacing: Theme.gap

    Repeater {
        model: root.rows

        BlockedNameRow {
            heir: root.heir
        }
    }
    NoteText {
        width: root.width
        visible: root.more.length > 0
        text: root.more
    }
}

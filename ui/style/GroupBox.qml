import QtQuick
import Corvane

// A titled box that holds a column of things that belong together.
Column {
    id: root

    property string title: ""
    /// What goes on in the box, beside its title.
    property string note: ""
    /// What a screen reader calls the box.
    property string spoken: root.title
    default property alias content: column.data

    spacing: 5
    Accessible.role: Accessible.Grouping
    Accessible.name: root.spoken
    Accessible.ignored: root.spoken.length === 0

    Headline {
        visible: root.title.length > 0
        text: root.title
        leftPadding: 4
        width: root.width

        NoteText {
            objectName: root.objectName + "Note"
            anchors.right: parent.right
            anchors.rightMargin: 4
            anchors.baseline: parent.baseline
            visible: root.note.length > 0
            text: root.note
            wrapMode: Text.NoWrap
        }
    }
    Rectangle {
        width: root.width
        height: column.implicitHeight + 2 * column.y
        radius: Theme.boxRadius
        color: Theme.box
        border.width: 1
        border.color: Theme.boxEdge

        Column {
            id: column
            x: Theme.padding
            y: Theme.padding - 2
            width: parent.width - 2 * x
            spacing: Theme.gap
        }
    }
}

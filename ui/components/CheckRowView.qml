import QtQuick
import Corvane

// One check: its state, its title, and below it a detail that can be copied.
Item {
    id: root

    required property badge badge
    required property string title
    required property string detail

    /// Where its texts begin, for what belongs below them.
    readonly property real textsInset: texts.x

    implicitHeight: Math.max(icon.height, texts.implicitHeight)

    Item {
        id: icon
        width: Theme.sized(20)
        height: Theme.sized(18)

        StateIcon {
            anchors.centerIn: parent
            badge: root.badge
            Accessible.ignored: true // the title says it
        }
    }
    Column {
        id: texts
        anchors.left: icon.right
        anchors.leftMargin: Theme.gap
        anchors.right: parent.right
        spacing: 2

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            font: Theme.body
            color: Theme.text
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: root.title + ", " + root.badge.spoken
        }
        NoteText {
            width: parent.width
            visible: root.detail.length > 0
            text: root.detail
            activeFocusOnTab: true
        }
    }
}

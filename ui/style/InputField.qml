import QtQuick
import QtQuick.Templates as T
import Corvane

// A one-line field with a rounded border.
T.TextField {
    id: root

    required property string label

    implicitWidth: Theme.sized(220)
    implicitHeight: Theme.sized(26)
    leftPadding: Theme.sized(8)
    rightPadding: Theme.sized(8)
    topPadding: Theme.sized(4)
    bottomPadding: Theme.sized(4)
    font: Theme.body
    color: Theme.text
    selectionColor: Theme.accentFill
    selectedTextColor: Theme.accentText
    placeholderTextColor: Theme.placeholderText
    selectByMouse: true
    verticalAlignment: TextInput.AlignVCenter
    activeFocusOnTab: true
    Accessible.name: root.label
    Accessible.role: Accessible.EditableText

    background: Rectangle {
        radius: Theme.radius
        color: Theme.field
        border.width: 1
        border.color: Theme.controlEdge

        FocusRing {
            shown: root.activeFocus
        }
    }
}

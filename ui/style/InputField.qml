import QtQuick
import QtQuick.Templates as T
import Corvane

// A one-line field with a rounded border.
T.TextField {
    id: root

    required property string label

    /// Return was pressed in it.
    signal entered

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
    persistentSelection: TextInHand.item === root
    Accessible.name: root.label
    Accessible.role: Accessible.EditableText

    Keys.onReturnPressed: event => root.enter(event)
    Keys.onEnterPressed: event => root.enter(event)
    Keys.onMenuPressed: TextInHand.openMenuBelow(root)

    function enter(event: KeyEvent) {
        if (!event.isAutoRepeat)
            root.entered();
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onPressedChanged: if (pressed) TextInHand.openMenu(root, point.position)
    }

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

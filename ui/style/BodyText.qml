import QtQuick
import Corvane

// Plain text that wraps, can be selected with the mouse or the keyboard, and copied.
TextEdit {
    id: root

    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    persistentSelection: true
    activeFocusOnTab: false
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    font: Theme.body
    color: Theme.text
    selectionColor: Theme.accentFill
    selectedTextColor: Theme.accentText
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text
    Accessible.ignored: root.text.length === 0
    Accessible.readOnly: true
    onActiveFocusChanged: if (!root.activeFocus && TextInHand.item !== root) root.deselect()
    Keys.onMenuPressed: TextInHand.openMenuBelow(root)

    TapHandler {
        acceptedButtons: Qt.RightButton
        onPressedChanged: if (pressed) TextInHand.openMenu(root, point.position)
    }
    FocusRing {
        shown: root.activeFocus && root.activeFocusOnTab
    }
}

import QtQuick
import Corvane

// What can be done with a text: it is copied, whole when nothing of it is selected, and a field is changed.
ChoiceMenu {
    id: root

    label: qsTr("Text")
    onClosed: TextInHand.letGo()

    TextMenuItem {
        objectName: "menuCut"
        text: qsTr("Cut")
        offered: TextInHand.editable
        enabled: TextInHand.editable && TextInHand.selected
        onTriggered: TextInHand.cut()
    }
    TextMenuItem {
        objectName: "menuCopy"
        text: qsTr("Copy")
        enabled: TextInHand.selected || !TextInHand.editable
        onTriggered: TextInHand.copy()
    }
    TextMenuItem {
        objectName: "menuPaste"
        text: qsTr("Paste")
        offered: TextInHand.editable
        enabled: TextInHand.canPaste
        onTriggered: TextInHand.paste()
    }
    TextMenuItem {
        objectName: "menuSelectAll"
        text: qsTr("Select All")
        onTriggered: TextInHand.selectAll()
    }

    function openAt(target: Item, x: real, y: real) {
        root.popup(target, x, y);
    }
}

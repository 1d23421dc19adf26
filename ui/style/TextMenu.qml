import QtQuick
import QtQuick.Templates as T
import Corvane

// What can be done with a text: it is copied, whole when nothing of it is selected, and a field is changed.
T.Menu {
    id: root

    implicitWidth: Theme.sized(150)
    implicitHeight: contentHeight + 2 * root.padding
    padding: 5
    modal: true
    dim: false
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

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: false
        Accessible.role: Accessible.PopupMenu
        Accessible.name: qsTr("Text")
    }

    background: Rectangle {
        radius: Theme.radius + 2
        color: Theme.box
        border.width: 1
        border.color: Theme.controlEdge
    }
}

import QtQuick
import QtQuick.Templates as T
import Corvane

// What can be done with a text: it is copied, whole when nothing of it is selected, and a field is changed.
T.Menu {
    id: root

    required property TextInHand inHand

    implicitWidth: Theme.sized(150)
    implicitHeight: contentHeight + 2 * root.padding
    padding: 5
    modal: true
    dim: false

    TextMenuItem {
        objectName: "menuCut"
        text: qsTr("Cut")
        offered: root.inHand.editable
        enabled: root.inHand.editable && root.inHand.selected
        onTriggered: root.inHand.cut()
    }
    TextMenuItem {
        objectName: "menuCopy"
        text: qsTr("Copy")
        enabled: root.inHand.selected || !root.inHand.editable
        onTriggered: root.inHand.copy()
    }
    TextMenuItem {
        objectName: "menuPaste"
        text: qsTr("Paste")
        offered: root.inHand.editable
        enabled: root.inHand.canPaste
        onTriggered: root.inHand.paste()
    }
    TextMenuItem {
        objectName: "menuSelectAll"
        text: qsTr("Select All")
        onTriggered: root.inHand.selectAll()
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

import QtQuick
import QtQuick.Templates as T
import Corvane

// A menu that opens where it is asked for. The click that closes it presses nothing below it.
T.Menu {
    id: root

    required property string label

    implicitWidth: Theme.sized(150)
    implicitHeight: contentHeight + 2 * root.padding
    padding: 5
    modal: true
    dim: false

    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: false
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.label
    }

    background: Rectangle {
        radius: Theme.radius + 2
        color: Theme.box
        border.width: 1
        border.color: Theme.controlEdge
    }
}

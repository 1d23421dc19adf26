import QtQuick
import QtQuick.Templates as T
import Corvane

// The list that a pop-up button opens.
T.Popup {
    id: root

    required property T.ComboBox owner

    y: root.owner.height + 3
    width: Math.max(root.owner.width, Theme.sized(110))
    implicitHeight: Math.min(implicitContentHeight + 2 * root.padding, Theme.sized(320))
    padding: 5

    contentItem: PickerList {
        chosen: root.owner.currentText
        model: root.visible ? root.owner.delegateModel : null
        currentIndex: root.owner.highlightedIndex
        Accessible.name: root.owner.Accessible.name
    }

    background: Rectangle {
        radius: Theme.radius + 2
        color: Theme.box
        border.width: 1
        border.color: Theme.controlEdge
    }
}

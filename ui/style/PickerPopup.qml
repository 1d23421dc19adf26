import QtQuick
import QtQuick.Templates as T
import Corvane

// The list that a pop-up button opens. The click that closes it presses nothing below it.
T.Popup {
    id: root

    required property T.ComboBox owner
    required property string chosen

    y: root.owner.height + 3
    width: Math.max(root.owner.width, Theme.sized(110))
    implicitHeight: Math.min(implicitContentHeight + 2 * root.padding, Theme.sized(320))
    padding: 5
    modal: true
    dim: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    contentItem: PickerList {
        chosen: root.chosen
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

import QtQuick
import QtQuick.Templates as T
import Corvane

// A pop-up button: one of a few choices. It shows `value`, whatever was picked: whoever owns it hears `picked`.
T.ComboBox {
    id: root

    required property string label
    required property list<string> choices
    required property string value
    /// Stands in the button while none of the choices is the value.
    property string placeholder: ""

    signal picked(string choice)

    model: root.choices
    implicitWidth: Theme.sized(120)
    implicitHeight: Theme.sized(24)
    leftPadding: Theme.sized(9)
    rightPadding: Theme.sized(24)
    focusPolicy: Qt.StrongFocus
    font: Theme.body
    opacity: root.enabled ? 1 : 0.5
    currentIndex: root.choices.indexOf(root.value)
    onActivated: index => {
        root.picked(root.choices[index]);
        root.currentIndex = Qt.binding(() => root.choices.indexOf(root.value));
    }
    Accessible.name: root.label
    Accessible.description: root.enabled ? root.value : qsTr("%1, not available now").arg(root.value)
    Accessible.role: Accessible.ComboBox
    Accessible.onPressAction: if (root.enabled) root.popup.open()
    Keys.onReturnPressed: root.popup.open()
    Keys.onEnterPressed: root.popup.open()

    contentItem: Text {
        text: root.value.length > 0 ? root.value : root.placeholder
        font: root.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }

    indicator: Symbol {
        name: "chevron.up.chevron.down"
        color: Theme.text
        width: Theme.sized(13)
        height: width
        x: root.width - width - 7
        y: (root.height - height) / 2
    }

    background: Rectangle {
        radius: Theme.radius
        color: root.down ? Theme.controlPressed : Theme.control
        border.width: 1
        border.color: Theme.controlEdge

        FocusRing {
            shown: root.visualFocus
        }
    }

    delegate: PickerRow {
        required property string modelData

        text: modelData
        width: ListView.view ? ListView.view.width : 0
        chosen: ListView.view && (ListView.view as PickerList).chosen === modelData
        highlighted: ListView.isCurrentItem
    }

    popup: PickerPopup {
        owner: root
    }
}

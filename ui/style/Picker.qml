pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Corvane

// A pop-up button: one of a few choices, made in its open list and nowhere else. It shows `value`, whatever was picked:
// its owner hears `picked`.
T.ComboBox {
    id: root

    required property string label
    required property list<string> choices
    required property string value
    /// Shown in the button while none of the choices is the value.
    property string placeholder: ""
    /// The key that opened the list is still held down.
    property bool opening: false

    signal picked(string choice)

    model: root.choices
    implicitWidth: Theme.sized(120)
    implicitHeight: Theme.sized(24)
    leftPadding: Theme.sized(9)
    rightPadding: Theme.sized(24)
    focusPolicy: Qt.TabFocus
    font: Theme.body
    opacity: root.enabled ? 1 : 0.5
    onModelChanged: root.showValue() // a new list would otherwise begin at its first choice
    Component.onCompleted: root.showValue()
    onActivated: index => {
        root.showValue();
        if (index >= 0 && index < root.choices.length)
            root.picked(root.choices[index]);
    }
    Accessible.name: root.label
    Accessible.description: root.enabled ? root.value : qsTr("%1, not available now").arg(root.value)
    Accessible.role: Accessible.ComboBox
    Accessible.onPressAction: if (root.enabled) root.popup.open()
    Keys.onPressed: event => {
        event.accepted = root.opening || (!root.popup.visible && (root.opens(event.key) || root.chooses(event)));
        if (root.opening || root.popup.visible || !root.opens(event.key))
            return;
        root.opening = true;
        root.popup.open();
    }
    Keys.onReleased: event => {
        event.accepted = root.opening;
        root.opening = root.opening && event.isAutoRepeat;
    }
    onActiveFocusChanged: root.opening = false

    function showValue() {
        root.currentIndex = Qt.binding(() => root.choices.indexOf(root.value));
    }

    function opens(key: int): bool {
        return key === Qt.Key_Up || key === Qt.Key_Down || key === Qt.Key_Space || key === Qt.Key_Return || key === Qt.Key_Enter;
    }

    // Keys that a closed list would take for a choice.
    function chooses(event: KeyEvent): bool {
        const leaves = event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab || event.key === Qt.Key_Escape;
        return event.key === Qt.Key_Home || event.key === Qt.Key_End || (event.text.length > 0 && !leaves);
    }

    contentItem: Text {
        text: root.value.length > 0 ? root.value : root.placeholder
        textFormat: Text.PlainText
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
        chosen: root.value
    }
}

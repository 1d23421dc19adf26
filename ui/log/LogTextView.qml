import QtQuick
import Corvane

// A scrolling log: its text can be selected across lines and copied, and the newest line stays in sight.
Item {
    id: root

    property OperationRunner op: null
    property string text: ""
    property string label: qsTr("Log")
    property string placeholder: ""
    readonly property alias canvas: canvas

    LogCanvas {
        id: canvas
        objectName: root.objectName + "Canvas"
        anchors.fill: parent
        source: root.op
        text: root.text
        font: Theme.fixed
        color: Theme.text
        selectionColor: Theme.accentFill
        selectedTextColor: Theme.accentText
        padding: 6
        label: root.label
        Keys.onMenuPressed: TextInHand.openMenuBelow(canvas)
        Accessible.role: Accessible.EditableText // makes it known; what else is spoken, the canvas answers itself

        TapHandler {
            acceptedButtons: Qt.RightButton
            onPressedChanged: if (pressed && !canvas.empty) TextInHand.openMenu(canvas, point.position)
        }
    }
    NoteText {
        objectName: root.objectName + "Placeholder"
        anchors.fill: parent
        anchors.margins: 6
        visible: canvas.empty
        enabled: visible
        text: root.placeholder
        font: Theme.body
    }
    ScrollLine {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        orientation: Qt.Vertical
        size: canvas.size
        position: canvas.position
        onPositionChanged: if (pressed) canvas.scrollTo(position)
    }
    FocusRing {
        shown: canvas.activeFocus
    }
}

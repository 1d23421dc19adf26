import QtQuick
import QtQuick.Templates as T
import Corvane

// A switch with its label in front, as a row of a form. It shows `on`, whatever was asked of it: whoever owns the value
// hears `asked` and decides.
T.Switch {
    id: root

    required property bool on
    property string note: ""

    signal asked(bool value)

    checked: root.on
    implicitWidth: implicitContentWidth
    implicitHeight: Math.max(Theme.sized(24), implicitContentHeight)
    spacing: Theme.padding
    focusPolicy: Qt.StrongFocus
    font: Theme.body
    opacity: root.enabled ? 1 : 0.5
    onToggled: {
        root.asked(root.checked);
        root.checked = Qt.binding(() => root.on);
    }
    Accessible.name: root.text
    Accessible.description: root.note
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: root.on
    Keys.onReturnPressed: root.asked(!root.on)

    // Asks for the natural width of its texts: one that followed the width they get would make a layout chase itself.
    contentItem: Item {
        implicitWidth: Math.ceil(Math.max(label.advanceWidth, note.advanceWidth)) + root.spacing + root.implicitIndicatorWidth
        implicitHeight: texts.implicitHeight

        TextMetrics {
            id: label
            font: root.font
            text: root.text
        }
        TextMetrics {
            id: note
            font: Theme.callout
            text: root.note
        }

        Column {
            id: texts
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.rightMargin: root.indicator.width + root.spacing
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Text {
                anchors.left: parent.left
                anchors.right: parent.right
                text: root.text
                font: root.font
                color: Theme.text
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            Text {
                anchors.left: parent.left
                anchors.right: parent.right
                visible: root.note.length > 0
                text: root.note
                font: Theme.callout
                color: Theme.secondaryText
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }

    indicator: Rectangle {
        implicitWidth: Theme.sized(36)
        implicitHeight: Theme.sized(20)
        x: root.width - width
        y: (root.height - height) / 2
        radius: height / 2
        color: root.on ? Theme.accent : Theme.switchOff

        Rectangle {
            x: root.on ? parent.width - width - 2 : 2
            y: 2
            width: parent.height - 4
            height: width
            radius: width / 2
            color: Theme.knob

            Behavior on x {
                NumberAnimation {
                    duration: 120
                }
            }
        }
        FocusRing {
            radius: parent.radius + 3
            shown: root.visualFocus
        }
    }
}

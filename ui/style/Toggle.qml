import QtQuick
import Corvane

// A switch with its label in front, as a row of a form. It shows `on`, whatever was asked of it: its owner
// hears `asked` and decides.
Pressable {
    id: root

    required property bool on
    property string note: ""

    signal asked(bool value)

    checkable: true
    checked: root.on
    implicitWidth: implicitContentWidth
    implicitHeight: Math.max(Theme.sized(24), implicitContentHeight)
    spacing: Theme.padding
    opacity: root.enabled ? 1 : 0.5
    onToggled: root.checked = Qt.binding(() => root.on)
    onClicked: root.asked(!root.on)
    Accessible.description: root.enabled ? root.note : qsTr("Not available now")
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: root.on
    Accessible.onToggleAction: if (root.enabled) root.asked(!root.on)

    contentItem: ToggleLabel {
        text: root.text
        note: root.note
        reserved: root.spacing + root.implicitIndicatorWidth
    }

    indicator: Rectangle {
        implicitWidth: Theme.sized(36)
        implicitHeight: Theme.sized(20)
        x: root.width - width
        y: (root.height - height) / 2
        radius: height / 2
        color: root.on ? Theme.accentTrack : Theme.switchOff

        Rectangle {
            x: root.on ? parent.width - width - 2 : 2
            y: 2
            width: parent.height - 4
            height: width
            radius: width / 2
            color: Theme.knob

            Behavior on x {
                enabled: !Looks.reducesMotion

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

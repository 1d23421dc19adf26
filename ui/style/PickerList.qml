import QtQuick

// The choices of a pop-up button, and which of them is the present one.
ListView {
    id: root

    required property string chosen

    clip: true
    implicitHeight: Math.max(1, root.contentHeight)
    Accessible.role: Accessible.List
}

import QtQuick
import QtQuick.Templates as T
import Corvane

// A bar that says that work goes on, without saying how much is left.
T.ProgressBar {
    id: root

    property string label: qsTr("In progress")

    implicitHeight: 6
    indeterminate: true
    Accessible.name: root.label
    Accessible.role: Accessible.ProgressBar

    background: Rectangle {
        radius: height / 2
        color: Theme.track
    }

    contentItem: RunningPiece {}
}

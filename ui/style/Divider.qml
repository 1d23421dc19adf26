import QtQuick
import Corvane

// A hairline between two regions.
Rectangle {
    implicitWidth: 1
    implicitHeight: 1
    color: Theme.divider
}

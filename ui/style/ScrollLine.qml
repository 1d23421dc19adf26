import QtQuick
import QtQuick.Templates as T
import Corvane

// A slim scroll bar that appears where there is something to scroll.
T.ScrollBar {
    id: root

    implicitWidth: 11
    implicitHeight: 11
    padding: 2
    minimumSize: 0.06
    visible: root.size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 7
        implicitHeight: 7
        radius: width / 2
        color: Theme.faded(Theme.scrollBar, root.pressed || root.hovered ? 0.9 : 0.55)
    }
}

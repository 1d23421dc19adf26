import QtQuick
import Corvane

// Scrolls an item into sight when it comes as the answer to what was pressed a moment ago.
Timer {
    id: root

    required property Item item
    required property bool when

    // Once the views around it have found their places.
    interval: 40
    onWhenChanged: if (root.when) root.start()
    onTriggered: {
        for (let place = root.item.parent; place; place = place.parent) {
            if (place instanceof ScrollArea)
                place.bringUp(root.item);
        }
    }
}

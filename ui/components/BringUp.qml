import QtQuick
import Corvane

// Scrolls an item into sight when it says something new: the answer to what was pressed a moment ago. What was there
// already when the screen opened stays where it is.
Timer {
    id: root

    required property Item item
    required property string words
    /// Whether it may be above what was pressed.
    property bool upwards: false
    property bool opened: false

    // Once the views around it have found their places.
    interval: 40
    Component.onCompleted: root.opened = true
    onWordsChanged: {
        if (root.opened && root.words.length > 0)
            root.restart();
    }
    onTriggered: {
        for (let place = root.item.parent; place; place = place.parent) {
            if (place instanceof ScrollArea)
                root.upwards ? place.reveal(root.item) : place.bringUp(root.item);
        }
    }
}

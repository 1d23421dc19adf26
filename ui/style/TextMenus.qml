pragma Singleton

import QtQuick
import Corvane

// The one context menu of all texts, and the text that it is open for.
QtObject {
    id: root

    readonly property Item target: root.inHand.item
    readonly property TextInHand inHand: TextInHand {}
    readonly property TextMenu menu: TextMenu {
        inHand: root.inHand
        onClosed: root.inHand.item = null
    }

    function openAt(target: Item, place: point) {
        root.inHand.item = target;
        root.menu.popup(target, place.x, place.y);
    }

    function openBelow(target: Item) {
        root.openAt(target, Qt.point(0, target.height));
    }
}

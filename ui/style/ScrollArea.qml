import QtQuick
import QtQuick.Templates as T
import Corvane

// A column taller than its window: scrolled by wheel, by keys, and to wherever the focus goes.
Flickable {
    id: root

    default property alias content: column.data
    property int padding: Theme.padding
    property int spacing: Theme.padding

    contentWidth: width
    contentHeight: column.implicitHeight + 2 * root.padding
    boundsBehavior: Flickable.StopAtBounds
    interactive: false
    clip: true
    focus: true
    T.ScrollBar.vertical: ScrollLine {}

    readonly property real lowest: Math.max(0, root.contentHeight - root.height)

    Keys.onPressed: event => {
        const page = root.height - 2 * root.padding;
        const ways = [[Qt.Key_PageUp, root.contentY - page], [Qt.Key_PageDown, root.contentY + page], [Qt.Key_Home, 0], [Qt.Key_End, root.lowest], [Qt.Key_Up, root.contentY - 40], [Qt.Key_Down, root.contentY + 40]];
        for (const [key, place] of ways) {
            if (event.key !== key)
                continue;
            root.scrollTo(place);
            event.accepted = true;
        }
    }

    function scrollTo(y: real) {
        root.contentY = Math.max(0, Math.min(y, root.lowest));
    }

    // Shows what has the focus; all that is above it, or below it, if there is room for it too.
    function reveal(item: Item) {
        const top = item.mapToItem(root.contentItem, 0, 0).y;
        const bottom = top + item.height;
        if (top < root.contentY)
            root.scrollTo(bottom + root.padding <= root.height ? 0 : top - root.padding);
        else if (bottom > root.contentY + root.height)
            root.scrollTo(top - root.padding >= root.lowest ? root.lowest : Math.min(top - root.padding, bottom + root.padding - root.height));
    }

    // Scrolls down to what has appeared, but keeps the focused item visible.
    function bringUp(item: Item) {
        const focused = root.Window.window ? root.Window.window.activeFocusItem : null;
        let place = item.mapToItem(root.contentItem, 0, 0).y + item.height + root.padding - root.height;
        if (focused && root.holds(focused))
            place = Math.min(place, focused.mapToItem(root.contentItem, 0, 0).y - root.padding);
        if (place > root.contentY)
            root.scrollTo(place);
    }

    function holds(item: Item): bool {
        for (let place = item; place; place = place.parent) {
            if (place === column)
                return true;
        }
        return false;
    }

    Column {
        id: column
        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
        spacing: root.spacing
    }

    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => {
            const turned = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 2;
            root.scrollTo(root.contentY - turned);
        }
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            const item = root.Window.window ? root.Window.window.activeFocusItem : null;
            if (item && root.holds(item))
                root.reveal(item);
        }
    }
}

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
    T.ScrollBar.vertical: ScrollLine {}

    function reveal(item: Item) {
        const top = item.mapToItem(root.contentItem, 0, 0).y;
        const low = Math.max(0, root.contentHeight - root.height);
        if (top < root.contentY)
            root.contentY = Math.max(0, top - root.padding);
        else if (top + item.height > root.contentY + root.height)
            root.contentY = Math.min(low, Math.max(0, Math.min(top - root.padding, top + item.height + root.padding - root.height)));
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
            root.contentY = Math.max(0, Math.min(root.contentHeight - root.height, root.contentY - turned));
        }
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            const item = root.Window.window ? root.Window.window.activeFocusItem : null;
            for (let place = item; place; place = place.parent) {
                if (place === column)
                    root.reveal(item);
            }
        }
    }
}

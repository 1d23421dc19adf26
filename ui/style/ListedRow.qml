import QtQuick
import Corvane

// A row of a list in a box, parted from the one above by a hairline.
Column {
    id: root

    required property int index

    width: parent ? parent.width : 0
    spacing: 10

    Divider {
        width: root.width
        visible: root.index > 0
    }
}

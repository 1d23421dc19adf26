import QtQuick
import Corvane

// Messages in the gap below what they are about. The first line finds its room kept, so that nothing moves when it comes.
Item {
    id: root

    default property alias content: column.data

    implicitHeight: Math.max(Math.ceil(line.height), column.implicitHeight) - 4

    FontMetrics {
        id: line
        font: Theme.callout
    }
    Column {
        id: column
        x: 4
        y: 5
        width: root.width - 8
        spacing: 4
    }
}

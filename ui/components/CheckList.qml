import QtQuick
import Corvane

// A list of checks in a box.
GroupBox {
    id: root

    required property RowList rows

    spoken: qsTr("Results")
    visible: root.rows.count > 0

    Repeater {
        model: root.rows

        CheckRowView {
            required property row row

            width: parent ? parent.width : 0
            badge: row.badge
            title: row.title
            detail: row.detail
        }
    }
}

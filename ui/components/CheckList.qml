pragma ComponentBehavior: Bound

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

        ListedRow {
            id: listed

            required property row row

            CheckRowView {
                width: listed.width
                badge: listed.row.badge
                title: listed.row.title
                detail: listed.row.detail
            }
        }
    }
}

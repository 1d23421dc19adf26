pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Corvane

// What the user has allowed, and the way to take it back.
Column {
    id: root

    required property RowList rows
    /// Who takes the keys of a name that goes from here.
    required property Item heir

    spacing: Theme.gap
    topPadding: 2 * Theme.gap

    Headline {
        width: root.width
        text: qsTr("Allowed by you")
    }
    Repeater {
        model: root.rows

        ListedRow {
            id: listed

            required property row row

            RowLayout {
                width: listed.width
                spacing: Theme.gap / 2

                NameAndNote {
                    Layout.fillWidth: true
                    name: listed.row.title
                    note: listed.row.detail
                }
                PushButton {
                    id: back
                    objectName: "blockAgain"
                    text: qsTr("Block again")
                    Accessible.name: qsTr("Block %1 again").arg(listed.row.title)
                    onClicked: {
                        if (back.visualFocus)
                            root.heir.forceActiveFocus(Qt.TabFocusReason);
                        Commands.takeBack(listed.row.id);
                    }
                }
            }
        }
    }
}

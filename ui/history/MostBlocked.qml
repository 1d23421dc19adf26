pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// The names that were blocked most, each with its number. The room for five is kept.
Column {
    id: root

    required property DayView day

    spacing: 4

    Text {
        text: qsTr("Blocked most")
        textFormat: Text.PlainText
        font: Theme.callout
        color: Theme.secondaryText
    }
    Item {
        width: root.width
        height: 5 * Theme.sized(24)

        Column {
            width: root.width

            Repeater {
                objectName: "blockedNames"
                model: root.day.names

                Item {
                    id: line

                    required property row row

                    width: root.width
                    height: Theme.sized(24)
                    Accessible.role: Accessible.StaticText
                    Accessible.name: line.row.detail === "1"
                                     ? qsTr("%1, blocked once").arg(line.row.title)
                                     : qsTr("%1, blocked %2 times").arg(line.row.title).arg(line.row.detail)

                    Text {
                        width: parent.width - number.width - Theme.gap
                        anchors.verticalCenter: parent.verticalCenter
                        text: line.row.title
                        textFormat: Text.PlainText
                        font: Theme.body
                        color: Theme.text
                        elide: Text.ElideMiddle
                        Accessible.ignored: true
                    }
                    Text {
                        id: number
                        anchors.right: parent.right
                        anchors.verticalCenter: parent.verticalCenter
                        text: line.row.detail
                        textFormat: Text.PlainText
                        font: Theme.body
                        color: Theme.secondaryText
                        Accessible.ignored: true
                    }
                    Divider {
                        anchors.bottom: parent.bottom
                        width: parent.width
                    }
                }
            }
        }
        NoteText {
            objectName: "missingNames"
            width: root.width
            visible: text.length > 0
            text: root.day.missingNames
        }
    }
}

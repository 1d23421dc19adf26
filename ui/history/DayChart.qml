pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// Bars and band with their axes. Arrow keys walk the slots.
Item {
    id: root

    required property DayView day
    required property real room
    readonly property real axisWidth: Theme.sized(38)
    readonly property int current: canvas.current
    readonly property string currentText: root.day.text.length >= 0 ? root.day.slotText(canvas.current) : ""
    readonly property real barsHeight: canvas.height - canvas.bandHeight - canvas.bandGap

    width: canvas.x + canvas.width
    height: canvas.height + Theme.sized(20)

    Repeater {
        model: [root.day.top, root.day.top / 2, 0]

        Text {
            required property real modelData
            required property int index

            width: canvas.x - 6
            y: Math.round(root.barsHeight * index / 2 - height / 2)
            visible: root.day.missing.length === 0
            horizontalAlignment: Text.AlignRight
            text: root.day.number(modelData)
            textFormat: Text.PlainText
            font: Theme.small
            color: Theme.secondaryText
            Accessible.ignored: true
        }
    }
    DayCanvas {
        id: canvas
        objectName: "dayCanvas"
        x: root.axisWidth
        width: canvas.fittingWidth(root.room, Screen.devicePixelRatio)
        height: Theme.sized(150)
        bandHeight: Theme.sized(12)
        bandGap: Theme.sized(8)
        day: root.day
        allowedColor: Theme.allowed
        blockedColor: Theme.blocked
        gridColor: Theme.divider
        protectedColor: Theme.protection(1)
        notBlockingColor: Theme.protection(2)
        backupColor: Theme.protection(3)
        downColor: Theme.protection(4)
        idleColor: Theme.quiet
        onWalked: slot => Commands.say(root.day.slotText(slot))
        Accessible.role: Accessible.Graphic
        Accessible.name: qsTr("The last 24 hours")
        Accessible.description: qsTr("%1 %2 Arrow keys walk through it.").arg(root.day.text).arg(root.day.protection)
        Accessible.focusable: true

        Rectangle {
            x: canvas.currentArea.x
            width: canvas.currentArea.width
            height: canvas.height
            visible: canvas.current >= 0
            color: Theme.faded(Theme.text, 0.14)
        }
        FocusRing {
            anchors.fill: parent
            anchors.margins: -4
            shown: canvas.activeFocus
        }
        BodyText {
            objectName: "dayMissing"
            anchors.centerIn: parent
            anchors.verticalCenterOffset: -parent.height / 4 // between two lines of the grid
            width: Math.min(implicitWidth, parent.width)
            horizontalAlignment: Text.AlignHCenter
            text: root.day.missing
            color: Theme.secondaryText
        }
    }
    Repeater {
        id: hours

        property int turn: 0

        model: hours.turn >= 0 ? root.day.marks(canvas.width, Theme.sized(52)) : []

        Item {
            id: hour

            required property axisMark modelData

            x: canvas.x + Math.round(canvas.width * hour.modelData.place)
            y: canvas.height

            Rectangle {
                width: 1
                height: 4
                color: Theme.divider
            }
            Text {
                x: Math.round(-width / 2)
                y: 4
                text: hour.modelData.label
                textFormat: Text.PlainText
                font: Theme.small
                color: Theme.secondaryText
                Accessible.ignored: true
            }
        }
    }
    Text {
        x: canvas.x + canvas.width - width
        y: canvas.height + 4
        text: qsTr("Now")
        textFormat: Text.PlainText
        font: Theme.small
        color: Theme.secondaryText
        Accessible.ignored: true
    }
    Connections {
        target: root.day
        function onWindowChanged() {
            hours.turn += 1;
        }
    }
}

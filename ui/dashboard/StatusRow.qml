import QtQuick
import Corvane

// The dot and the status in one sentence.
Row {
    id: root

    spacing: 10

    Rectangle {
        objectName: "statusDot"
        width: 14
        height: 14
        radius: 7
        color: Theme.dot(Looks.dotTint)
        anchors.verticalCenter: parent.verticalCenter
        Accessible.ignored: true // the line says it
    }
    BodyText {
        objectName: "statusLine"
        width: root.width - 24
        text: App.statusLine
        font: Theme.headline
        anchors.verticalCenter: parent.verticalCenter
    }
}

import QtQuick
import Corvane

// Each time that Pi-hole was started again by itself, newest first; takes no room while there is none.
Disclosure {
    id: root

    property bool shown: false

    visible: App.comeback.history.length > 0
    title: qsTr("What Corvane did")
    open: root.shown
    onAsked: open => root.shown = open

    BodyText {
        objectName: "comebackHistory"
        width: parent.width
        activeFocusOnTab: true
        text: App.comeback.history.join("\n")
        font: Theme.callout
        color: Theme.secondaryText
    }
}

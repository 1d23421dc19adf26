pragma ComponentBehavior: Bound

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

    Repeater {
        model: App.comeback.history

        NoteText {
            required property string modelData
            required property int index

            objectName: "comeback" + index
            width: parent ? parent.width : 0
            activeFocusOnTab: true
            text: modelData
        }
    }
}

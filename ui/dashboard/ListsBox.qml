import QtQuick
import Corvane

// Pi-hole's block lists: how many names, how old, and the way to fresh ones.
GroupBox {
    id: root

    /// The end of a run is shown elsewhere.
    property bool toldElsewhere: false

    objectName: "listsBox"
    title: qsTr("Block lists")

    BodyText {
        objectName: "listsText"
        width: parent.width
        text: Looks.listsText
    }
    MessageText {
        objectName: "listsHint"
        width: parent.width
        text: Looks.loadingLists ? "" : Looks.listsHint
    }
    TestButton {
        objectName: "refreshLists"
        title: qsTr("Refresh lists")
        busy: Looks.loadingLists
        allowed: Looks.canRefreshLists
        onPressed: Commands.loadBlockLists()
    }
    Column {
        width: parent.width
        visible: Looks.loadingLists
        spacing: 6

        ProgressLine {
            width: parent.width
            label: qsTr("Refreshing the block lists")
        }
        NoteText {
            objectName: "listsProgress"
            width: parent.width
            text: App.listRun.progress
        }
    }
    NoteBeside {
        id: verdict
        objectName: "listsVerdict"
        about: "lists"
        width: parent.width
        text: root.toldElsewhere || Looks.loadingLists ? "" : App.notes[verdict.about] ?? ""
    }
    Loader {
        width: parent.width
        active: App.listRun.printed // a log costs memory, and most days have none
        visible: active

        sourceComponent: Disclosure {
            id: details

            property bool wanted: false

            objectName: "listsLog"
            title: Looks.loadingLists ? qsTr("Live log") : qsTr("Show details")
            open: details.wanted
            onAsked: open => details.wanted = open

            LogTextView {
                objectName: "listsLogText"
                width: parent.width
                height: 160
                op: App.listRun.log
                label: qsTr("Log of the block lists' refresh")
            }
        }
    }
}

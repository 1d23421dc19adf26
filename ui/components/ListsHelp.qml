import QtQuick
import Corvane

// A Pi-hole without block lists: the way to load them, and how that went.
Column {
    id: root

    /// It was here that the lists were asked for: their end is shown here too.
    property bool asked: false

    visible: App.listsEmpty || (root.asked && (Looks.loadingLists || verdict.text.length > 0))
    spacing: 6

    TestButton {
        objectName: "loadLists"
        visible: App.listsEmpty || Looks.loadingLists
        title: qsTr("Load the block lists")
        busy: Looks.loadingLists
        allowed: Looks.canChangePihole
        onPressed: {
            root.asked = true;
            Commands.loadBlockLists();
        }
    }
    NoteBeside {
        id: verdict
        width: root.width
        about: "lists"
    }
}

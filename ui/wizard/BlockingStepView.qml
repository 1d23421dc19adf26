import QtQuick
import Corvane

// Proves that a tracker is blocked and an ordinary name is not.
StepScaffold {
    id: root

    title: qsTr("Test blocking")
    subtitle: qsTr("The test looks up a tracker domain that Pi-hole's default list blocks, and a normal one. On the very first start Pi-hole downloads its block lists, which takes about a minute.")

    TestButton {
        objectName: "blockingTest"
        title: qsTr("Test")
        busy: Looks.testingBlocking
        onPressed: Commands.runBlockingTest()
    }
    CheckList {
        objectName: "blockingRows"
        width: parent.width
        rows: Looks.blockingRows
    }
    MessageText {
        objectName: "blockingCounts"
        width: parent.width
        text: Looks.blockingCounts
    }
    NoteBeside {
        width: parent.width
        about: "blocking"
    }
    ListsHelp {
        width: parent.width
    }
}

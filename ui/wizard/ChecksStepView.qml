import QtQuick
import Corvane

// Whether this Mac can run Pi-hole.
StepScaffold {
    id: root

    title: qsTr("Check this Mac")
    subtitle: qsTr("These checks only look; they change nothing.")
    Component.onCompleted: Commands.checksAppeared()

    CheckList {
        objectName: "systemChecks"
        spoken: qsTr("Checks of this Mac")
        width: parent.width
        rows: Looks.systemChecks
    }
    PortsPanel {
        width: parent.width
    }
    OperationLogView {
        objectName: "checksMaintLog"
        width: parent.width
        op: App.maintOp
        own: Looks.movesPort
        passing: true
    }
    TestButton {
        objectName: "checks"
        title: qsTr("Test (run the checks again)")
        busy: Looks.checking
        onPressed: Commands.runSystemChecks()
    }
}

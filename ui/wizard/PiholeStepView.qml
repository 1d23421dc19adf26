import QtQuick
import Corvane

// The password, the start, and the proof that Pi-hole runs.
StepScaffold {
    id: root

    title: qsTr("Start Pi-hole")
    subtitle: Looks.piholeSubtitle
    Component.onCompleted: Commands.piholeAppeared()

    PasswordBox {
        width: parent.width
        onEntered: if (startButton.enabled) Commands.startPihole()
    }
    Column {
        width: parent.width
        spacing: 6

        Row {
            spacing: Theme.gap

            PushButton {
                id: startButton
                objectName: "startPiholeButton"
                prominent: true
                text: qsTr("Start Pi-hole")
                enabled: Looks.canSetUpPihole
                onClicked: Commands.startPihole()
            }
            BodyText {
                objectName: "dockerIsMissing"
                visible: !App.dockerWorks
                text: qsTr("Docker is not running yet (step %1).").arg(Looks.stepNumber(WizardStep.Install))
                color: Theme.secondaryText
                anchors.verticalCenter: parent.verticalCenter
            }
            UnderWay {
                objectName: "startUnderWay"
                anchors.verticalCenter: parent.verticalCenter
                words: Looks.startInPreparation
            }
        }
        NoteText {
            width: parent.width
            text: qsTr("The first start can take a minute or two while Pi-hole gets going.")
        }
        MessageText {
            objectName: "piholeStartMessage"
            width: parent.width
            text: Looks.bannerTellsStart ? "" : App.startMessage
            color: Theme.orangeText
        }
    }
    OperationLogView {
        objectName: "startLog"
        width: parent.width
        op: App.startOp
        own: op.succeeded || op.failureSummary.length > 0 // it may have been forgotten
    }
    PortsPanel {
        width: parent.width
        visible: Looks.startFailedOnPort && Looks.takenPorts.count > 0
    }
    OperationLogView {
        objectName: "portLog"
        width: parent.width
        op: App.maintOp
        own: Looks.movesPort
        passing: true
    }
    CheckList {
        objectName: "piholeChecks"
        spoken: qsTr("Tests of Pi-hole")
        width: parent.width
        rows: Looks.piholeChecks
    }
    NoteBeside {
        width: parent.width
        about: "pihole"
    }
    TestButton {
        objectName: "pihole"
        title: qsTr("Test")
        busy: Looks.testingPihole
        onPressed: Commands.runPiholeTests()
    }
    UdpHelp {
        width: parent.width
        visible: App.udpProblem && !App.udpReplied
    }
}

import QtQuick
import Corvane

// The everyday buttons and the tests.
Column {
    id: root

    Column {
        width: root.width
        spacing: 10

        Flow {
            width: root.width
            spacing: Theme.gap

            PushButton {
                objectName: "pauseButton"
                text: Looks.pauseLabel
                enabled: !Looks.operating
                onClicked: Commands.togglePause()
            }
            PauseMenu {
                objectName: "pauseMenuButton"
                enabled: !Looks.operating
            }
            PushButton {
                objectName: "openDashboardButton"
                text: qsTr("Open dashboard")
                enabled: !Looks.operating
                onClicked: Commands.openDashboard()
            }
            PushButton {
                objectName: "startButton"
                text: qsTr("Start")
                enabled: Looks.canStart
                onClicked: Commands.startPiholeNow(Place.Dashboard)
            }
            PushButton {
                objectName: "stopButton"
                text: qsTr("Stop")
                enabled: Looks.canStopOrRestart
                onClicked: Commands.stopPihole()
            }
            PushButton {
                objectName: "restartButton"
                text: qsTr("Restart")
                enabled: Looks.canStopOrRestart
                onClicked: Commands.restartPihole()
            }
            Spinner {
                objectName: "controllingSpinner"
                visible: Looks.controlling && !Looks.bannerTellsStart
                height: Theme.sized(24)
                label: qsTr("Pi-hole: working")
            }
            PauseLeft {
                objectName: "pauseLeft"
            }
        }
        Flow {
            width: root.width
            spacing: Theme.gap / 2

            TestButton {
                objectName: "runTestsAgain"
                title: qsTr("Run tests again")
                busy: Looks.testingAnything
                onPressed: Commands.runAllTests()
            }
            RestoreButton {
                objectName: "restoreOldSettings"
                place: Place.Dashboard
            }
        }
        CheckList {
            objectName: "testResults"
            spoken: qsTr("Test results")
            width: root.width
            rows: Looks.testResults
        }
        NoteBeside {
            width: root.width
            about: "system"
        }
    }
    OperationLogView {
        objectName: "colimaLog"
        width: root.width
        op: App.maintOp
        passing: true
        visible: Looks.startingColima && !Looks.bannerTellsStart
    }
    MessageRoom {
        width: root.width

        MessageText {
            objectName: "startMessage"
            width: parent.width
            text: Looks.bannerTellsStart ? "" : App.startMessage
            color: Theme.orangeText
        }
        NoteBeside {
            width: parent.width
            about: "start"
        }
        MessageText {
            objectName: "dnsMessage"
            width: parent.width
            text: Looks.bannerTellsDNS ? "" : App.dnsMessage
        }
    }
}

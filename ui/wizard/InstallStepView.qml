import QtQuick
import Corvane

// Colima and Docker: what is there, what is missing, and how to get it.
StepScaffold {
    id: root

    title: qsTr("Install Colima and Docker")
    subtitle: qsTr("Colima runs Docker containers without Docker Desktop. This uses Homebrew: 'brew install colima docker', then 'colima start --cpu 2 --memory 2 --disk 10'.")
    Component.onCompleted: Commands.installAppeared()

    CheckList {
        objectName: "tools"
        spoken: qsTr("Tools")
        width: parent.width
        rows: Looks.tools
    }
    Column {
        width: parent.width
        visible: !App.hasBrew
        spacing: Theme.gap

        BodyText {
            width: parent.width
            text: qsTr("Homebrew is not installed. This app never installs it for you.")
            color: Theme.secondaryText
        }
        PushButton {
            objectName: "getHomebrewButton"
            text: qsTr("Get Homebrew (opens brew.sh)")
            onClicked: Commands.openHomebrew()
        }
    }
    Row {
        visible: App.hasBrew
        spacing: Theme.gap

        PushButton {
            objectName: "installButton"
            prominent: !App.hasColima || !App.hasDocker
            text: qsTr("Install Colima and Docker")
            enabled: !App.installOp.running
            onClicked: Commands.installColimaAndDocker()
        }
        PushButton {
            objectName: "startColimaButton"
            text: qsTr("Start Colima")
            enabled: !Looks.operating
            onClicked: Commands.startColimaOnly()
        }
    }
    GroupBox {
        width: parent.width

        Toggle {
            objectName: "stepAutostartSwitch"
            width: parent.width
            text: qsTr("Start Colima at login")
            note: qsTr("Uses Homebrew's login service for Colima. Switching it changes how Colima is started, so Colima restarts once.")
            enabled: !Looks.operating
            on: App.autostartColima
            onAsked: value => Commands.changeAutostart(value)
        }
        Divider {
            width: parent.width
        }
        TestRow {
            objectName: "dockerTest"
            width: parent.width
            label: qsTr("Docker engine answers (docker info)")
            badge: Looks.dockerBadge
            tested: Looks.dockerTested
            busy: Looks.testingDocker
            onPressed: Commands.testDocker()
        }
        MessageText {
            objectName: "dockerHint"
            width: parent.width
            text: Looks.dockerHint
        }
    }
    OperationLogView {
        objectName: "installLog"
        width: parent.width
        op: App.installOp
    }
}

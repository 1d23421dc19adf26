import QtQuick
import QtQuick.Layouts
import Corvane

// Warns that this Mac asks a Pi-hole that does not answer, and offers the two ways out.
Rectangle {
    id: root

    /// Whether Colima is being started from here.
    property bool startsColima: false

    implicitHeight: column.implicitHeight + 24
    color: Theme.faded(Theme.red, 0.1)
    Accessible.role: Accessible.AlertMessage
    Accessible.name: warning.text

    ColumnLayout {
        id: column
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 12
        spacing: 8

        RowLayout {
            spacing: 8

            Symbol {
                name: "exclamationmark.triangle.fill"
                color: Theme.red
                Layout.preferredWidth: Theme.sized(18)
                Layout.preferredHeight: Theme.sized(18)
                Layout.alignment: Qt.AlignTop
            }
            BodyText {
                id: warning
                Layout.fillWidth: true
                text: qsTr("This Mac's DNS points at Pi-hole, but Pi-hole is not answering. Websites may not load.")
                font: Theme.bodyBold
                color: Theme.redText
            }
        }
        NoteText {
            Layout.fillWidth: true
            text: qsTr("This often happens after a restart when Colima is not running yet.")
            color: Theme.text
        }
        RowLayout {
            spacing: 8

            PushButton {
                objectName: "startPiholeNowButton"
                prominent: true
                enabled: !Looks.operating && !Looks.controlling
                text: qsTr("Start Pi-hole now")
                onClicked: {
                    root.startsColima = true;
                    Commands.startPiholeNow();
                }
            }
            RestoreButton {
                objectName: "bannerRestore"
            }
            PushButton {
                objectName: "hideBannerButton"
                text: qsTr("Hide")
                onClicked: Commands.hideBanner()
            }
        }
        MessageText {
            Layout.fillWidth: true
            objectName: "bannerDnsMessage"
            text: App.dnsMessage
        }
        MessageText {
            Layout.fillWidth: true
            objectName: "bannerStartMessage"
            text: App.startMessage
        }
        OperationLogView {
            objectName: "bannerStartLog"
            Layout.fillWidth: true
            op: App.startOp
            passing: true
        }
        OperationLogView {
            objectName: "bannerMaintLog"
            Layout.fillWidth: true
            op: App.maintOp
            visible: root.startsColima && Looks.startingColima
        }
    }
}

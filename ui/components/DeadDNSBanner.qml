import QtQuick
import QtQuick.Layouts
import Corvane

// Warns that this Mac asks a Pi-hole that does not answer, and offers the two ways out.
Rectangle {
    id: root

    implicitHeight: column.implicitHeight + 24
    color: Theme.faded(Theme.red, 0.1)
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Warning")

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
        StatusNote {
            Layout.fillWidth: true
            objectName: "bannerStatusNote"
        }
        BrowserRuleNote {
            objectName: "bannerBrowserRule"
            Layout.fillWidth: true
            color: Theme.text
        }
        RowLayout {
            spacing: Theme.gap / 2

            TestButton {
                objectName: "startPiholeNow"
                prominent: true
                title: qsTr("Start Pi-hole now")
                busy: Looks.controlling && Looks.bannerTellsStart
                allowed: Looks.canChangePihole
                onPressed: Commands.startPiholeNow(Place.Banner)
            }
            RestoreButton {
                objectName: "bannerRestore"
                place: Place.Banner
            }
            PushButton {
                objectName: "hideBannerButton"
                text: qsTr("Hide")
                onClicked: Commands.hideBanner()
            }
        }
        ComebackNews {
            objectName: "bannerComebackNews"
            Layout.fillWidth: true
        }
        StartsAgain {
            objectName: "bannerStartsAgain"
            Layout.fillWidth: true
            visible: App.comeback.bannerHasStarted
        }
        Disclosure {
            id: details
            objectName: "bannerDetails"

            property bool shown: false

            Layout.fillWidth: true
            visible: App.restoreScript.length > 0
            title: qsTr("Without Corvane")
            open: details.shown
            onAsked: open => details.shown = open

            RestoreScriptNote {
                objectName: "bannerRestoreScript"
                width: parent.width
            }
        }
        MessageText {
            Layout.fillWidth: true
            objectName: "bannerDnsMessage"
            text: Looks.bannerTellsDNS ? App.dnsMessage : ""
        }
        MessageText {
            Layout.fillWidth: true
            objectName: "bannerStartMessage"
            text: Looks.bannerTellsStart ? App.startMessage : ""
        }
        NoteBeside {
            Layout.fillWidth: true
            objectName: "bannerStartNote"
            about: "start"
        }
        OperationLogView {
            objectName: "bannerStartLog"
            Layout.fillWidth: true
            op: App.startOp
            own: op.failureSummary.length > 0
            passing: true
        }
        OperationLogView {
            objectName: "bannerMaintLog"
            Layout.fillWidth: true
            op: App.maintOp
            visible: Looks.startingColima && Looks.bannerTellsStart
        }
    }
}

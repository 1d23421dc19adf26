pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// What the set-up will do, before it does anything.
StepScaffold {
    id: root

    title: qsTr("Welcome")
    subtitle: qsTr("Pi-hole blocks ads and trackers by DNS: before your Mac connects to a website, it asks a DNS server for the address. Pi-hole answers 'nowhere' for known ad and tracker names.")

    GroupBox {
        width: parent.width
        title: qsTr("What this wizard will do")

        Repeater {
            model: [
                qsTr("1. Check this Mac, then install Colima and Docker with Homebrew if they are missing."),
                qsTr("2. Run Pi-hole in a container that listens on this Mac only (127.0.0.1)."),
                qsTr("3. Test that it answers and that it blocks."),
                qsTr("4. In step %1, point this Mac's DNS at Pi-hole first and 1.1.1.1 as backup.").arg(Looks.stepNumber(WizardStep.DNS)),
                qsTr("5. Look at your browsers' own secure-DNS settings, which can bypass Pi-hole (read-only).")
            ]

            BodyText {
                required property string modelData

                width: parent ? parent.width : 0
                text: modelData
            }
        }
    }
    BodyText {
        width: parent.width
        text: qsTr("Your network settings change only in step %1, after you confirm. Before that, nothing about your DNS is touched.").arg(Looks.stepNumber(WizardStep.DNS))
    }
    BodyText {
        width: parent.width
        text: qsTr("Nothing is sent to a cloud service. The only internet traffic is Homebrew and Docker downloading software, and Pi-hole itself looking up names at 1.1.1.1.")
        color: Theme.secondaryText
    }
    RestoreRow {
        objectName: "welcomeRestore"
        width: parent.width
    }
}

import QtQuick
import QtQuick.Layouts
import Corvane

// Whether there is a second DNS server, and what follows from either choice.
GroupBox {
    id: root

    Toggle {
        objectName: "piholeOnlySwitch"
        width: parent.width
        text: qsTr("Pi-hole only (no 1.1.1.1 backup)")
        on: App.piholeOnly
        onAsked: value => App.piholeOnly = value
    }
    RowLayout {
        width: parent.width
        visible: App.piholeOnly
        spacing: Theme.gap

        Symbol {
            name: "exclamationmark.triangle.fill"
            color: Theme.orange
            Layout.preferredWidth: Theme.sized(16)
            Layout.preferredHeight: Theme.sized(16)
            Layout.alignment: Qt.AlignTop
        }
        BodyText {
            objectName: "piholeOnlyWarning"
            Layout.fillWidth: true
            text: qsTr("Warning: with Pi-hole only, nothing can be looked up while Pi-hole is stopped (for example after a restart before Colima is up) until you restore your old settings.")
            color: Theme.orangeText
        }
    }
    NoteText {
        width: parent.width
        text: qsTr("Honest note: macOS may sometimes ask 1.1.1.1 instead of Pi-hole, so a few ads can get through. 'Pi-hole only' avoids that, with the risk above.")
    }
    BrowserRuleNote {
        width: parent.width
    }
}

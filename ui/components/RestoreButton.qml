import QtQuick
import Corvane

// Puts the old DNS servers back; waits while they are being changed.
TestButton {
    id: root

    /// Where it is: how it went is shown there.
    required property int place

    title: qsTr("Restore my old settings")
    busy: Looks.restoringDNS
    allowed: !Looks.applyingDNS
    onPressed: Commands.restoreOldSettings(root.place)
}

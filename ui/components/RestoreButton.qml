import QtQuick
import Corvane

// Puts the old DNS servers back; waits while they are being changed.
TestButton {
    title: qsTr("Restore my old settings")
    busy: Looks.restoringDNS
    allowed: !Looks.applyingDNS
    onPressed: Commands.restoreOldSettings()
}

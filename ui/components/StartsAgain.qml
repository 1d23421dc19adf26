import QtQuick
import Corvane

// The choice that Pi-hole is started again by itself.
Toggle {
    text: qsTr("Start Pi-hole again when it stops unasked")
    note: qsTr("After a login, waking or a crash, while this Mac uses Pi-hole: up to three tries, after 10, 30 and 120 seconds. Never after you stopped it.")
    on: App.comeback.startsAgain
    onAsked: value => Commands.setStartsAgain(value)
}

import QtQuick
import Corvane

// What the dot and its sentence leave out.
MessageText {
    objectName: "statusNote"
    text: App.statusNote
    color: Theme.text
}

import QtQuick
import Corvane

// Whether browsers stay with Pi-hole while 1.1.1.1 is the backup.
NoteText {
    objectName: "browserRule"
    visible: text.length > 0
    text: Looks.browserRuleText
}

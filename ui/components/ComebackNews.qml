import QtQuick
import Corvane

// That Pi-hole is about to be started again, or was lately.
MessageText {
    objectName: "comebackNews"
    text: App.comeback.news
    color: Theme.text
}

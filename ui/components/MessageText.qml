import QtQuick
import Corvane

// The result of an action; takes no room while there is none.
BodyText {
    id: root

    visible: root.text.length > 0
    activeFocusOnTab: true
    font: Theme.callout
    color: Theme.secondaryText
}

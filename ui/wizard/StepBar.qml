import QtQuick
import QtQuick.Layouts
import Corvane

// Back and on, and where one is.
RowLayout {
    id: root

    PushButton {
        objectName: "backButton"
        text: qsTr("Back")
        enabled: Looks.hasStepBefore
        onClicked: Commands.go(App.step - 1)
    }
    Item {
        Layout.fillWidth: true
    }
    BodyText {
        objectName: "stepPosition"
        text: Looks.stepPosition
        color: Theme.secondaryText
    }
    Item {
        Layout.fillWidth: true
    }
    Item {
        visible: !next.visible
        Layout.preferredWidth: next.implicitWidth
    }
    PushButton {
        id: next
        objectName: "nextButton"
        visible: Looks.hasStepAfter
        prominent: true
        text: qsTr("Next")
        onClicked: Commands.go(App.step + 1)
    }
}

import QtQuick
import QtQuick.Layouts
import Corvane

// The set-up: the steps on the left, the current one beside them, and the way back and on.
RowLayout {
    id: root

    spacing: 0

    // "Next" is the default button: Return goes to it unless a control has the focus.
    function goOn(event: KeyEvent) {
        if (!event.isAutoRepeat && Looks.returnGoesOn)
            Commands.go(App.step + 1);
    }

    StepSidebar {
        Layout.preferredWidth: 250
        Layout.fillHeight: true
    }
    Divider {
        Layout.fillHeight: true
    }
    ColumnLayout {
        spacing: 0
        Keys.onReturnPressed: event => root.goOn(event)
        Keys.onEnterPressed: event => root.goOn(event)

        Loader {
            objectName: "stepArea"
            Layout.fillWidth: true
            Layout.fillHeight: true
            source: Qt.resolvedUrl(Looks.stepView)
            focus: true
        }
        Divider {
            Layout.fillWidth: true
        }
        StepBar {
            Layout.fillWidth: true
            Layout.margins: 12
        }
    }
}

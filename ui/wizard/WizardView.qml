import QtQuick
import QtQuick.Layouts
import Corvane

// The set-up: the steps on the left, the current one beside them, and the way back and on.
RowLayout {
    id: root

    spacing: 0

    /// A button that was pressed by Return is off while its work goes on: a second Return is not meant for "Next".
    readonly property bool working: Looks.operating || Looks.controlling || Looks.checking || Looks.testingDocker || Looks.testingAnything || Looks.loadingServices || Looks.applyingDNS || Looks.restoringDNS || Looks.testingBrowser

    // "Next" is the default button: Return goes to it unless a control has the focus.
    function goOn(event: KeyEvent) {
        if (!event.isAutoRepeat && !root.working && App.step < 7)
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

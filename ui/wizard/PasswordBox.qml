import QtQuick
import QtQuick.Layouts
import Corvane

// The admin password: typed, generated or copied, with a hint when it breaks a rule.
GroupBox {
    id: root

    /// Return was pressed in the field.
    signal entered

    RowLayout {
        width: parent.width
        spacing: Theme.gap

        BodyText {
            text: qsTr("Admin password")
        }
        InputField {
            objectName: "passwordField"
            Layout.fillWidth: true
            label: qsTr("Admin password")
            font: Theme.fixedBody
            text: App.passwordInput
            inputMethodHints: Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText | Qt.ImhSensitiveData
            onTextEdited: App.passwordInput = text
            onEntered: root.entered()
        }
        PushButton {
            objectName: "generateButton"
            text: qsTr("Generate")
            onClicked: Commands.generatePassword()
        }
        CopyButton {
            objectName: "copyPasswordButton"
            enabled: App.passwordInput.length > 0
            onClicked: Commands.copyPasswordInput()
        }
    }
    Column {
        width: parent.width
        // Room for one hint is kept, so that the button below does not move while one types.
        height: Math.max(implicitHeight, Math.ceil(line.height))
        spacing: 4

        FontMetrics {
            id: line
            font: Theme.callout
        }
        MessageText {
            objectName: "tooShortHint"
            width: parent.width
            text: Looks.passwordTooShort ? qsTr("Use at least 8 characters.") : ""
            color: Theme.orangeText
        }
        MessageText {
            objectName: "otherCharactersHint"
            width: parent.width
            text: Looks.passwordHasOtherCharacters ? qsTr("Use only letters, digits and - _ . @ +") : ""
            color: Theme.redText
        }
    }
}

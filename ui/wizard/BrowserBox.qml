import QtQuick
import QtQuick.Layouts
import Corvane

// One browser: what its settings mean for Pi-hole, and the way to them.
GroupBox {
    id: root

    required property string browserId
    required property badge badge
    required property string name
    required property string detail
    required property bool canOpen
    required property string remark

    spoken: root.name
    RowLayout {
        width: parent.width
        spacing: Theme.gap

        CheckRowView {
            id: check
            Layout.fillWidth: true
            badge: root.badge
            title: root.name
            detail: root.detail
        }
        PushButton {
            objectName: root.objectName + "TestButton"
            Layout.alignment: Qt.AlignTop
            text: qsTr("Test")
            enabled: root.canOpen && !Looks.provingBrowser
            Accessible.name: qsTr("Test %1").arg(root.name)
            onClicked: Commands.proveBrowser(root.browserId)
        }
        PushButton {
            objectName: root.objectName + "SettingsButton"
            Layout.alignment: Qt.AlignTop
            text: qsTr("Open settings")
            enabled: root.canOpen
            Accessible.name: qsTr("Open settings of %1").arg(root.name)
            onClicked: Commands.openBrowserSettings(root.browserId)
        }
    }
    MessageText {
        objectName: root.objectName + "Remark"
        x: check.textsInset
        width: parent.width - x
        text: root.remark
        color: Theme.text
    }
}

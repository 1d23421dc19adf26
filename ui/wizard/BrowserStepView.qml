pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// Whether the browsers ask Pi-hole or a DNS server of their own.
StepScaffold {
    id: root

    title: qsTr("Check your browser")
    subtitle: qsTr("Some browsers have their own secure DNS (DNS over HTTPS). When it is on, that browser skips Pi-hole. This step only reads settings and never changes them.")
    Component.onCompleted: Commands.browsersAppeared()

    GroupBox {
        width: parent.width
        visible: !App.browserReadAllowed

        BodyText {
            width: parent.width
            text: qsTr("To check, this app will read each browser's settings file (Chrome, Edge and Brave: 'Local State'; Firefox: 'prefs.js') in your Library folder. Nothing is changed or sent anywhere.")
        }
        PushButton {
            objectName: "allowBrowserReadButton"
            prominent: true
            text: qsTr("Allow the read-only check")
            onClicked: Commands.allowBrowserRead()
        }
    }
    TestButton {
        objectName: "checkBrowsers"
        visible: App.browserReadAllowed
        title: qsTr("Check again")
        busy: Looks.scanningBrowsers
        onPressed: Commands.scanBrowsers()
    }
    BodyText {
        objectName: "noBrowserText"
        visible: Looks.foundNoBrowser
        text: qsTr("No known browser found.")
    }
    Repeater {
        model: App.browserReadAllowed ? Looks.browsers : null

        BrowserBox {
            required property row row

            objectName: "browser_" + row.id
            width: parent ? parent.width : 0
            browserId: row.id
            badge: row.badge
            name: row.title
            detail: row.detail
            canOpen: row.enabled
            remark: row.note
        }
    }
    GroupBox {
        width: parent.width
        title: qsTr("Browser test")

        BodyText {
            width: parent.width
            text: qsTr("This opens a made-up name like cv-1a2b3c.example.com in your default browser. An error page is expected: the name does not exist. The test only looks for the name in Pi-hole's query log for up to 20 seconds.")
            color: Theme.secondaryText
        }
        TestButton {
            objectName: "browserTest"
            title: qsTr("Browser test")
            busy: Looks.testingBrowser
            onPressed: Commands.runBrowserTest()
        }
        MessageText {
            id: browserVerdict
            objectName: "browserTestDetail"
            width: parent.width
            text: App.browserTestDetail
            color: Theme.text

            BringUp {
                item: browserVerdict
                words: App.browserTestDetail
            }
        }
        NoteBeside {
            width: parent.width
            about: "browser"
        }
    }
}

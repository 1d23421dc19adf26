import QtQuick
import Corvane

// The network services, each with a switch.
GroupBox {
    id: root

    title: qsTr("Network services")

    BodyText {
        objectName: "noServicesText"
        width: parent.width
        visible: Looks.services.count === 0
        text: Looks.loadingServices ? qsTr("Reading network services...") : qsTr("No network services found.")
        color: Theme.secondaryText
    }
    Repeater {
        model: Looks.services

        Toggle {
            required property row row
            required property int index

            objectName: "service" + (index + 1)
            width: parent ? parent.width : 0
            text: row.title
            note: row.detail
            on: Looks.contains(Looks.selectedServices, row.id)
            onAsked: value => Commands.select(row.id, value)
        }
    }
}

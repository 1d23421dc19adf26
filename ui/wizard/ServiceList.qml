pragma ComponentBehavior: Bound

import QtQuick
import Corvane

// The network services, each with a switch.
GroupBox {
    id: root

    title: qsTr("Network services")
    note: Looks.loadingServices && Looks.services.count > 0 ? qsTr("Reading network services...") : ""

    BodyText {
        objectName: "noServicesText"
        width: parent.width
        visible: Looks.services.count === 0
        text: Looks.loadingServices ? qsTr("Reading network services...") : qsTr("No network services found.")
        color: Theme.secondaryText
    }
    Repeater {
        model: Looks.services

        ListedRow {
            id: service

            required property row row

            Toggle {
                objectName: "service" + (service.index + 1)
                width: service.width
                text: service.row.title
                note: service.row.detail
                on: Looks.contains(Looks.selectedServices, service.row.id)
                onAsked: value => Commands.select(service.row.id, value)
            }
        }
    }
}

import QtQuick
import Corvane

// What to do when DNS reaches Pi-hole over TCP only.
GroupBox {
    id: root

    objectName: "udpHelp"
    title: qsTr("UDP port 53 is probably not reaching your Mac")

    BringUp {
        item: root
        words: root.visible ? root.title : ""
    }
    BodyText {
        objectName: "udpIsUsual"
        width: parent.width
        visible: App.tcpWorks && App.grpcFlagSupported
        text: qsTr("This is usual right after Colima was installed. One restart of Colima mends it for good; Pi-hole keeps its settings, and the tests go on by themselves.")
    }
    BodyText {
        width: parent.width
        text: qsTr("The container is healthy, but DNS over UDP gets no answer. Colima's default SSH port forwarder only forwards TCP; the gRPC forwarder also forwards UDP.")
    }
    BodyText {
        width: parent.width
        text: qsTr("Fix: run 'colima stop', then 'colima start --edit', change 'portForwarder: ssh' to 'portForwarder: grpc', save, and run 'colima start'. Then press Test again.")
    }
    PushButton {
        objectName: "fixUdpButton"
        prominent: true
        visible: App.grpcFlagSupported
        text: qsTr("Restart Colima with UDP forwarding for me")
        enabled: !Looks.operating
        onClicked: Commands.fixUDPForwarding()
    }
    BodyText {
        width: parent.width
        visible: !App.grpcFlagSupported
        text: qsTr("This Colima version does not show a --port-forwarder option, so use the manual steps above.")
        color: Theme.secondaryText
    }
}

import QtQuick 2.15
import QtQuick.Window 2.15
import ZelTools 1.0
import ZelTools.Service 1.0

Window {
    width: 800
    height: 480
    visible: true
    title: "The little coffee machine"

    Service {
        anchors.fill: parent
        user: "Anna"
        accessLevel: Access.Technician
        page: "machine"
        onClosed: Qt.quit()
    }
}

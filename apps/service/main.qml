import QtQuick 2.15
import QtQuick.Window 2.15
import ZelTools.Service 1.0

Window {
    id: window

    property alias environmentFile: screenItem.environmentFile
    property alias folders: screenItem.folders
    property alias bundleFolder: screenItem.bundleFolder
    readonly property Item service: screenItem

    title: "ZelTools"
    color: "black"

    Service {
        id: screenItem

        anchors.fill: parent
        onClosed: window.close()
    }
}

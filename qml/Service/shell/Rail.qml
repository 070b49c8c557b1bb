import QtQuick 2.15
import ZelTools.Style 1.0

// The names of the pages at the side of the screen: icons above short words on a small display, and
// beside them on a wide one.
Rectangle {
    id: rail

    property bool isWide: false
    property var pages: []
    property string current

    signal picked(string name)

    width: isWide ? 26 * Theme.unit : 10 * Theme.unit
    color: Theme.surface

    PageHeader {
        id: head
        width: parent.width
        visible: rail.isWide
        iconName: "wrench"
        title: qsTr("Service")
    }
    ListView {
        anchors.fill: parent
        anchors.topMargin: rail.isWide ? head.height + Theme.unit : 0
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 0 // Rows that are made ahead might not be complete when the screen closes.
        clip: true
        model: rail.pages

        delegate: RailButton {
            required property var modelData

            objectName: "rail." + modelData.name
            width: ListView.view.width
            implicitHeight: rail.isWide ? 7 * Theme.unit : Math.max(Theme.touch, rail.height / rail.pages.length)
            isWide: rail.isWide
            text: rail.isWide ? modelData.title : modelData.short || modelData.title
            icon.name: modelData.icon
            checked: rail.current === modelData.name
            onClicked: rail.picked(modelData.name)
        }
    }
}

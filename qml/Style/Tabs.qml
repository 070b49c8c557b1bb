import QtQuick 2.15
import ZelTools.Style 1.0
import "parts"

// A row of texts of which one is chosen: the parts of a page, or a filter. picked() is the user's
// choice, which stays when the texts are translated. Texts that don't fit are reached by dragging.
Item {
    id: tabs

    property var model: []
    property alias currentIndex: list.currentIndex
    property alias count: list.count

    signal picked(int index)

    implicitWidth: list.contentWidth
    implicitHeight: Theme.touch

    ListView {
        id: list
        anchors.fill: parent
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        spacing: Theme.unit
        clip: contentWidth > width
        highlightMoveDuration: 0
        model: tabs.model.length

        delegate: TabButton {
            required property int index

            objectName: tabs.objectName + "." + index
            text: Theme.oneLine(tabs.model[index] || "")
            checked: list.currentIndex === index
            onClicked: {
                list.currentIndex = index
                tabs.picked(index)
            }
        }
    }
}

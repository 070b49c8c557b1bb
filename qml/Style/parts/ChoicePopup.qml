import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// The list of a combo box, which is not a child of the page: it is told in which direction text runs.
T.Popup {
    id: popup

    property bool mirrors: false
    property alias model: list.model
    property alias currentIndex: list.currentIndex

    implicitHeight: Math.min(list.contentHeight, 6.5 * Theme.touch) + 2
    padding: 1
    margins: Theme.unit

    contentItem: TouchList {
        id: list
        LayoutMirroring.enabled: popup.mirrors
        LayoutMirroring.childrenInherit: true
        highlightMoveDuration: 0
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.surface
        border.color: Theme.line
    }
}

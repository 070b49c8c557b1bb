import QtQuick 2.15
import ZelTools.Style 1.0

// A list for touch displays: it does not overshoot its bounds, and creates items for visible rows only.
ListView {
    // Whether a finger or the scroll bar moves the list.
    readonly property bool isHeld: dragging || bar.pressed

    clip: true
    reuseItems: true
    // Qt would make rows ahead later, and warn if the model has lost them by then.
    cacheBuffer: 0
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: true

    ScrollBar.vertical: ScrollBar { id: bar }
}

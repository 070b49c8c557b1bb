import QtQuick 2.15
import ZelTools.Style 1.0

// A list that grows while one looks at it. It stays at its newest row while it follows; a drag away
// from there ends that, so that the rows that are read stay in place.
Item {
    id: root

    property alias model: list.model
    property alias delegate: list.delegate
    property alias count: list.count
    property bool follows: true
    property bool newestFirst: false // Whether the newest row is the first one and not the last one.
    property string name // The prefix of the objectNames.

    function jumpToNewest() {
        follows = true
        moveToNewest()
    }
    function moveToNewest() {
        if (follows && newestFirst)
            list.positionViewAtBeginning()
        else if (follows)
            list.positionViewAtEnd()
    }

    TouchList {
        id: list
        anchors.fill: parent
        objectName: root.name + ".list"
        onIsHeldChanged: root.follows = !isHeld && (root.newestFirst ? atYBeginning : atYEnd)
        onHeightChanged: later.restart()
        onMovementEnded: root.follows = root.follows || (root.newestFirst ? atYBeginning : atYEnd)
    }
    Timer { // The list has taken in the new rows by then.
        id: later
        interval: 0
        onTriggered: root.moveToNewest()
    }
    Connections {
        target: list.model
        function onModelReset() { // Other rows, so that there is no place to stay at.
            root.follows = true
            later.restart()
        }
        function onRowsInserted() {
            later.restart()
        }
    }
    Button {
        anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter; margins: Theme.unit }
        objectName: root.name + ".newest"
        visible: !root.follows && !root.newestFirst
        icon.name: "arrow-down"
        kind: Button.Primary
        text: qsTr("Newest line")
        onClicked: root.jumpToNewest()
    }
}

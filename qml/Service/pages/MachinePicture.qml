import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools 1.0
import ZelTools.Style 1.0

// The live picture of a state machine. A finger drags it and two fingers zoom it. It follows the
// present state until it is dragged.
Rectangle {
    id: root

    property alias machine: diagram.machine
    property bool follows: true
    readonly property bool hasPicture: diagram.problem === ""
    readonly property bool showsAll: diagram.zoom === diagram.fitZoom

    // Below the first zoom, names cannot be read at arm's length; below the second one, not at all.
    readonly property real readableZoom: 14 / Theme.fontBody
    readonly property real leastZoom: 0.6

    // The place nearest to the wanted one. A picture that is smaller than the view stands in its middle.
    function bounded(wanted, content, size) {
        return content < size ? (content - size) / 2 : Math.max(0, Math.min(content - size, wanted))
    }

    function moveTo(x, y) {
        view.contentX = bounded(x, view.contentWidth, view.width)
        view.contentY = bounded(y, view.contentHeight, view.height)
    }

    // Zooms so that the point x, y of the view stays where it is.
    function zoomAt(zoom, x, y) {
        const before = diagram.zoom
        diagram.zoom = Math.max(Math.min(0.25, diagram.fitZoom), Math.min(2, zoom))
        const ratio = diagram.zoom / before
        moveTo((view.contentX + x) * ratio - x, (view.contentY + y) * ratio - y)
    }

    function zoomBy(factor) {
        zoomAt(diagram.zoom * factor, view.width / 2, view.height / 2)
    }

    function show(zoom) {
        diagram.zoom = zoom
        follows = true
        showPresent()
    }

    // Shows all, or what is around the present state.
    function reset() {
        if (diagram.fitZoom >= leastZoom)
            showAll()
        else
            showPart()
    }

    function showAll() {
        show(diagram.fitZoom)
    }

    function showPart() {
        show(Math.max(readableZoom, diagram.fitZoom))
    }

    function showPresent() {
        const present = diagram.currentRect
        if (follows)
            moveTo(present.x + (present.width - view.width) / 2, present.y + (present.height - view.height) / 2)
    }

    radius: 1.2 * Theme.radius
    color: Theme.surface
    onMachineChanged: reset()
    onWidthChanged: reset()
    onHeightChanged: reset()

    MachineDiagram {
        id: diagram
        objectName: "machine.diagram"
        anchors.fill: view
        contentX: view.contentX
        contentY: view.contentY
        backgroundColor: Theme.surface
        stateColor: Theme.surfaceRaised
        currentColor: Theme.accent
        currentTextColor: Theme.accentText
        takenColor: Theme.accent
        textColor: Theme.text
        lineColor: Theme.textMuted
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontBody
        onCurrentRectChanged: root.showPresent()
    }
    Flickable {
        id: view
        objectName: "machine.view"
        anchors.fill: parent
        anchors.margins: Theme.unit
        leftMargin: Math.max(0, (width - contentWidth) / 2)
        topMargin: Math.max(0, (height - contentHeight) / 2)
        contentWidth: diagram.contentWidth
        contentHeight: diagram.contentHeight
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.horizontal: ScrollBar {}
        T.ScrollBar.vertical: ScrollBar {}
        onDragStarted: root.follows = false
        onLeftMarginChanged: root.moveTo(contentX, contentY) // Flickable has moved the content with it.
        onTopMarginChanged: root.moveTo(contentX, contentY)
    }
    PinchHandler {
        property real start: 1

        target: null
        onActiveChanged: {
            start = diagram.zoom
            root.follows = false
        }
        onActiveScaleChanged: root.zoomAt(start * activeScale, centroid.position.x, centroid.position.y)
    }
    EmptyState {
        anchors.fill: parent
        visible: !root.hasPicture
        icon: "sitemap"
        title: qsTr("No picture")
        text: diagram.problem
    }
}

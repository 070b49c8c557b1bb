import QtQuick 2.15
import QtTest 1.15
import ZelTools.Service 1.0

Item {
    width: 800
    height: 480

    Service {
        id: service
        anchors.fill: parent
        page: "machine"
    }

    TestCase {
        name: "Machine"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function find(name) {
            return findChild(service, name)
        }

        function init() {
            setup.startMachine()
            tryVerify(() => find("machine.state").text === "Brewing" && find("machine.path").count > 20)
        }

        function test_thePageFollowsTheMachine() {
            setup.removeMachine()
            tryCompare(find("machine.choice"), "count", 0)
            verify(find("machine.none").visible)
            setup.startMachine()
            tryCompare(find("machine.state"), "text", "Brewing")
            verify(!find("machine.none").visible)
            service.language = "ar" // A binding loop would be a warning.
            waitForRendering(service, 100)
            service.language = "en"
            const card = find("machine.state").parent.parent.parent
            verify(card.height > find("machine.state").height + 40)
        }

        function test_theChosenMachineStays() {
            const choice = find("machine.choice")
            setup.startMachine(1)
            tryCompare(choice, "count", 2)
            const chosen = choice.valueAt(1)
            choice.forceActiveFocus()
            keyClick(Qt.Key_Down)
            compare(find("machine.diagram").machine, chosen)
            setup.removeMachine()
            tryCompare(choice, "count", 1)
            compare(choice.currentIndex, 0)
            compare(find("machine.diagram").machine, chosen)
            setup.startMachine()
            setup.removeMachine(1)
            tryCompare(choice, "count", 1)
            compare(choice.currentIndex, 0)
            compare(find("machine.diagram").machine, choice.valueAt(0))
        }

        function test_thePictureIsDraggedAndZoomed() {
            const view = find("machine.view")
            const picture = find("machine.diagram")
            tryVerify(() => picture.currentRect.width > 0 && view.contentHeight > view.height)
            const seen = picture.currentRect.y - view.contentY
            verify(seen >= 0 && seen < view.height)

            const before = view.contentY
            mouseDrag(view, 100, 100, 0, 150, Qt.LeftButton, Qt.NoModifier, 50)
            verify(view.contentY < before)
            compare(picture.contentY, view.contentY)

            const zoom = picture.zoom
            mouseClick(find("machine.zoomIn"))
            fuzzyCompare(picture.zoom, 1.25 * zoom, 0.01)
            mouseClick(find("machine.all"))
            compare(picture.zoom, picture.fitZoom)
            verify(view.contentHeight <= view.height + 1)
            compare(view.contentX, (view.contentWidth - view.width) / 2)
            mouseClick(find("machine.all"))
            fuzzyCompare(picture.zoom, zoom, 0.01)
        }

        function test_twoFingersZoom() {
            const view = find("machine.view")
            const picture = find("machine.diagram")
            const zoom = picture.zoom
            const touch = touchEvent(view)
            touch.press(0, view, 150, 150).commit()
            touch.stationary(0).press(1, view, 200, 200).commit()
            for (let step = 1; step <= 5; ++step) {
                touch.move(0, view, 150 - 10 * step, 150).move(1, view, 200 + 20 * step, 200).commit()
                wait(20) // as a finger is slower than a program
            }
            touch.release(0, view, 100, 150).release(1, view, 300, 200).commit()
            verify(picture.zoom > 1.2 * zoom)
        }
    }
}

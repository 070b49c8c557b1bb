import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0

Service {
    id: service

    readonly property Item list: find("log.list")

    function find(name) {
        return test.findChild(service.currentPage, name)
    }

    width: 800
    height: 480
    language: "en"
    page: "log"

    TestCase {
        id: test
        name: "Log"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function logLines(count) {
            for (let i = 0; i < count; ++i)
                setup.log("<b>Line</b> " + i)
        }

        function init() {
            find("modules").chosen = "Machine" // The library itself may log something at any time.
            mouseClick(find("log.clear"))
            tryCompare(list, "count", 0)
            tryCompare(find("log.empty"), "visible", true)
            logLines(100)
            tryCompare(list, "count", 100)
            tryCompare(list, "atYEnd", true)
        }

        function cleanup() {
            service.accessLevel = Access.ReadOnly
        }

        function test_followsUntilADrag_data() {
            return [{ tag: "of the lines", x: 300, y: 50, dy: 250 },
                    { tag: "of the scroll bar", x: list.width - 5, y: list.height - 14, dy: -150 }]
        }

        function test_followsUntilADrag(row) {
            tryVerify(() => list.itemAtIndex(99) !== null)
            compare(list.itemAtIndex(99).text, "<b>Line</b> 99")
            mouseDrag(list, row.x, row.y, 0, row.dy, Qt.LeftButton, Qt.NoModifier, 10)
            tryCompare(list, "moving", false)
            const newest = find("log.newest")
            verify(newest.visible)
            const place = list.contentY
            logLines(20)
            tryCompare(list, "count", 120)
            compare(list.contentY, place)
            mouseClick(newest)
            tryCompare(list, "atYEnd", true)
            verify(!newest.visible)
            logLines(1)
            tryCompare(list, "count", 121)
            tryCompare(list, "atYEnd", true)
        }

        function test_staysInPlaceWhileOldLinesGo() {
            mouseDrag(list, 300, 50, 0, 200, Qt.LeftButton, Qt.NoModifier, 10)
            tryCompare(list, "moving", false)
            list.model.maximumRows = 110
            const text = list.itemAt(0, list.contentY + 100).text
            logLines(60)
            tryVerify(() => list.count === 110)
            waitForRendering(list)
            compare(list.itemAt(0, list.contentY + 100).text, text)
            list.model.maximumRows = 10000
            mouseClick(find("log.newest"))
        }

        function test_pause() {
            mouseClick(find("log.pause"))
            logLines(5)
            wait(50)
            compare(list.count, 100)
            mouseClick(find("log.pause"))
            tryCompare(list, "count", 105)
        }

        function test_filterByText() {
            mouseClick(find("log.search"))
            for (const key of "LINE</B> 42")
                keyClick(key)
            tryVerify(() => find("log.search").text === "LINE</B> 42")
            compare(list.count, 1)
            mouseClick(find("log.search.clear"))
            tryCompare(list, "count", 100)
        }

        function test_filterByLevel() {
            const level = find("log.level")
            level.forceActiveFocus()
            while (level.currentText !== "Warning")
                keyClick(Qt.Key_Down)
            tryCompare(list, "count", 0)
            level.forceActiveFocus()
            while (level.currentIndex > 0)
                keyClick(Qt.Key_Up)
            tryCompare(list, "count", 100)
        }

        function test_modules() {
            const modules = find("modules")
            const inside = name => test.findChild(modules.contentItem, name)
            mouseClick(find("log.modules"))
            tryCompare(modules, "opened", true)
            waitForRendering(modules.contentItem, 200) // Its place depends on its texts.
            const toggle = inside("modules.debug.Banner")
            mouseClick(toggle)
            verify(inside("modules.reason").text.includes("operator"))
            verify(!toggle.checked)
            service.accessLevel = Access.Operator
            mouseClick(toggle)
            compare(inside("modules.reason").text, "")
            tryCompare(toggle, "checked", true)
            mouseClick(toggle)

            mouseClick(inside("modules.Banner"), 20, 20)
            tryCompare(modules, "visible", false)
            compare(list.count, 0)
            mouseClick(find("log.modules"))
            tryCompare(modules, "opened", true)
            waitForRendering(modules.contentItem, 200)
            mouseClick(inside("dialog.accept"))
            tryVerify(() => list.count >= 100)
        }
    }
}

import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0

Service {
    id: service

    readonly property Item list: find("events.list")

    function first() {
        return list.itemAtIndex(0) ? list.itemAtIndex(0).text : ""
    }
    function find(name) {
        return test.findChild(service.currentPage, name)
    }

    width: 800
    height: 480
    language: "en"
    page: "events"

    TestCase {
        id: test
        name: "Events"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function logEvents(count) {
            for (let i = 0; i < count; ++i)
                setup.logEvent("Event " + i)
        }

        function opened(dialog) {
            tryCompare(dialog, "opened", true)
            waitForRendering(dialog.contentItem, 200) // Its place depends on its texts.
        }

        function initTestCase() {
            setup.logEvent("<img src='file:///x.png'><b>bold</b>\u0007\u202e " + "x".repeat(20000))
            Library.logManager.qmlEventLogParameter("brightness")
            logEvents(230)
            tryCompare(find("events.pageText"), "text", "Page 1 of 3")
        }

        function test_pages() {
            logEvents(230)
            tryVerify(() => first() === "Event 229")
            compare(list.count, 100)
            mouseClick(find("events.forward"))
            tryVerify(() => first() === "Event 129")
            mouseClick(find("events.last"))
            tryVerify(() => /^Page (\d) of \1$/.test(find("events.pageText").text))
            tryVerify(() => list.count < 100)
            verify(!find("events.forward").enabled)
            mouseClick(find("events.back"))
            tryCompare(list, "count", 100)
            mouseClick(find("events.first"))
            tryVerify(() => first() === "Event 229")
        }

        function test_kinds() {
            const kind = find("events.kind")
            mouseClick(kind)
            tryCompare(kind.popup, "opened", true)
            while (kind.highlightedIndex < LogManager.MenuParameterFilter)
                keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Return)
            tryCompare(list, "count", 1)
            verify(list.itemAtIndex(0).text.includes("brightness"))
            verify(!find("events.forward").visible)
            kind.forceActiveFocus()
            while (kind.currentIndex > 0)
                keyClick(Qt.Key_Up)
            tryCompare(list, "count", 100)
        }

        function test_days() {
            const days = find("days")
            const tapOn = name => mouseClick(test.findChild(days.contentItem, name))
            mouseClick(find("events.days"))
            opened(days)
            days.month = new Date(2026, 3, 5, 12) // A month with a day that has no midnight in Cairo.
            verify(test.findChild(days.contentItem, "day.2026-04-24") !== null)
            days.month = days.today
            tapOn("days.before")
            verify(test.findChild(days.contentItem, "day." + Qt.formatDate(days.month, "yyyy-MM-10")).width >= 48)
            const month = Qt.formatDate(days.month, "yyyy-MM-")
            tapOn("day." + month + "20")
            tapOn("day." + month + "10")
            compare([days.from, days.to], [month + "10", month + "20"])
            tapOn("dialog.accept")
            tryCompare(find("events.empty"), "visible", true)

            mouseClick(find("events.days"))
            opened(days)
            tapOn("days.before") // What is not accepted changes nothing.
            tapOn("day." + month + "11")
            tapOn("dialog.reject")
            verify(find("events.days").text.includes("20"))

            mouseClick(find("events.days"))
            opened(days)
            tapOn("days.last7")
            tryCompare(list, "count", 100)
            mouseClick(find("events.days"))
            opened(days)
            tapOn("days.all")
            tryCompare(find("events.days"), "text", "All days")
        }

        function test_aTapShowsTheWholeLine() {
            mouseClick(find("events.last"))
            tryVerify(() => list.count < 100)
            list.positionViewAtEnd()
            const row = list.itemAtIndex(list.count - 1)
            verify(row.text.startsWith("<img src='file:///x.png'><b>bold</b>\ufffd"))
            verify(row.text.length <= 1000)
            mouseClick(row)
            const line = find("line")
            opened(line)
            const edit = test.findChild(line.contentItem, "line.text")
            compare(edit.textFormat, TextEdit.PlainText)
            verify(edit.text.startsWith("<img src='file:///x.png'>"))
            mouseDrag(edit, 2, 8, 200, 0)
            verify(edit.selectedText.startsWith("<img"))
            keyClick(Qt.Key_A, Qt.ControlModifier)
            compare(edit.selectedText.length, 4000)
            mouseClick(test.findChild(line.contentItem, "line.last"))
            verify(edit.text.endsWith("xxx"))
            compare(edit.text.length + 5 * 4000, line.line.length)
            mouseClick(test.findChild(line.contentItem, "dialog.accept"))
            tryCompare(line, "visible", false)
            mouseClick(find("events.first"))
            tryCompare(list, "count", 100)
        }

        function test_eventsThatComeWhileItScrolls() {
            for (let i = 0; i < 5; ++i) {
                mouseDrag(list, 300, 250, 0, -200, Qt.LeftButton, Qt.NoModifier, 10)
                logEvents(10)
            }
            tryCompare(list, "moving", false)
            verify(!list.atYBeginning)
            mouseClick(find("events.last"))
            tryVerify(() => list.count < 100)
            mouseClick(find("events.first"))
            for (let row = 0; row < 3; ++row)
                tryVerify(() => list.itemAtIndex(row) && list.itemAtIndex(row).text === "Event " + (9 - row))
        }
    }
}

import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0

Service {
    id: service

    readonly property Item list: find("switches.list")
    readonly property Item notice: test.findChild(service, "notice")

    function find(name) {
        return test.findChild(service.currentPage, name)
    }

    width: 800
    height: 480
    language: "en"
    page: "switches"
    user: "Anna"
    environmentFile: setup.folder + "/zel.env"

    TestCase {
        id: test
        name: "Switches"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        // Types into the search field, and taps on what is then the only switch.
        function search(text) {
            find("switches.search").clear()
            mouseClick(find("switches.search"))
            for (const key of text)
                keyClick(key)
            compare(find("switches.search").text, text)
            tryVerify(() => list.count === 1 && list.itemAtIndex(0) && list.itemAtIndex(0).name.toLowerCase().startsWith(text))
            waitForRendering(list, 200)
        }
        function open(name) {
            search(name.toLowerCase())
            mouseClick(list.itemAtIndex(0), 100, 30)
            opened()
        }
        function opened() {
            tryCompare(find("switch"), "opened", true)
            waitForRendering(find("switch").contentItem, 200) // Its place depends on its texts.
        }
        function inside(name) {
            return findChild(find("switch").contentItem, name)
        }

        function cleanup() {
            service.accessLevel = Access.ReadOnly
            service.environmentFile = setup.folder + "/zel.env"
            find("switches.search").clear()
        }

        function test_whoMayNotChangeHearsWhoMay() {
            verify(find("switches.locked").visible)
            search("lab_test")
            const toggle = find("switches.toggle.LAB_TEST")
            mouseClick(toggle)
            verify(!toggle.checked)
            tryVerify(() => notice.isShown && notice.isBad)
            verify(notice.text.includes("technician"))
            service.accessLevel = Access.Technician
            verify(!find("switches.locked").visible)
        }

        function test_onAndOff() {
            service.accessLevel = Access.Technician
            search("lab_test")
            const row = list.itemAtIndex(0)
            mouseClick(find("switches.toggle.LAB_TEST"))
            verify(row.isOn && row.isChanged)
            verify(setup.readFile("zel.env").includes("LAB_TEST=1"))
            mouseClick(find("switches.changed"))
            compare(list.count, 1)
            mouseClick(list.itemAtIndex(0), 100, 30)
            opened()
            mouseClick(inside("switch.reset"))
            tryCompare(list, "count", 0)
            tryCompare(find("switches.empty"), "visible", true)
            mouseClick(find("switches.changed"))
            verify(!setup.readFile("zel.env").includes("LAB_TEST"))
        }

        function test_aRefusedNumber() {
            service.accessLevel = Access.Technician
            open("PUMP_TIME")
            for (const key of "12x")
                keyClick(key)
            mouseClick(inside("dialog.accept"))
            opened()
            verify(inside("switch.reason").text.startsWith("\"12x\""))
            compare(list.itemAtIndex(0).source, "unset")
            keyClick(Qt.Key_Backspace)
            compare(inside("switch.reason").text, "")
            keyClick(Qt.Key_Return)
            tryCompare(find("switch"), "visible", false)
            compare(list.itemAtIndex(0).value, "12")
            verify(setup.readFile("zel.env").includes("PUMP_TIME=12"))
        }

        function test_markupAndLineFeedsInAText() {
            service.accessLevel = Access.Technician
            open("CANBUS_INTERFACE_PATH")
            for (const key of "<b>can0</b>")
                keyClick(key)
            keyClick(Qt.Key_Return)
            tryCompare(find("switch"), "visible", false)
            compare(list.itemAtIndex(0).value, "<b>can0</b>")
            search("vl6180x") // Its description has a line feed.
            verify(!list.itemAtIndex(0).text.includes("\n"))
        }

        function test_aFileThatCannotBeWritten() {
            service.accessLevel = Access.Technician
            service.environmentFile = setup.folder + "/missing/zel.env"
            verify(!find("switches.save").visible)
            search("lab_test")
            mouseClick(find("switches.toggle.LAB_TEST"))
            tryCompare(find("switches.save"), "visible", true)
            verify(find("switches.fileProblem").text !== "")
            service.environmentFile = setup.folder + "/zel.env"
            mouseClick(find("switches.toggle.LAB_TEST"))
            tryCompare(find("switches.save"), "visible", false)
        }

        function test_categories() {
            const category = find("switches.category")
            category.forceActiveFocus()
            while (category.currentText !== "Payment")
                keyClick(Qt.Key_Down)
            service.language = "de"
            tryVerify(() => category.currentText !== "" && category.currentText !== "Payment")
            verify(category.currentIndex > 0)
            service.language = "en"
            tryCompare(category, "currentText", "Payment")
            waitForRendering(list)
            list.positionViewAtBeginning()
            for (let row = 0; row < 3; ++row)
                compare(list.itemAtIndex(row).ListView.section, "Payment")
            while (category.currentIndex > 0)
                keyClick(Qt.Key_Up)
        }
    }
}

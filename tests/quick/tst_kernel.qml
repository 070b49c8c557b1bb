import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0

Service {
    id: service

    readonly property Item list: find("kernel.list")

    function find(name) {
        return test.findChild(service.currentPage, name)
    }

    width: 800
    height: 480
    language: "en"
    page: "kernel"

    TestCase {
        id: test
        name: "Kernel"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function test_lines() {
            verify(find("kernel.empty").visible)
            compare(find("kernel.state").text, "Not capturing")
            compare(find("kernel.restricted").visible, list.model.isRestricted)
            setup.writeFile("kernel", "[Sun Nov 22 08:30:00 2026] <b>usb 1-1</b>: new device\n"
                            + "[Sun Nov 22 08:30:01 2026] can0: bus-off\u001b[0m\n" + "x".repeat(1000000) + "\n")
            if (!setup.captureKernelLog("kernel")) { // A desktop says how one gets the lines.
                verify(find("kernel.empty").visible)
                return
            }
            tryCompare(list, "count", 3)
            compare(find("kernel.state").text, "Capturing")
            compare(list.itemAtIndex(0).text, "<b>usb 1-1</b>: new device")
            mouseClick(find("kernel.search"))
            for (const key of "CAN0")
                keyClick(key)
            tryCompare(list, "count", 1)
            mouseClick(list.itemAtIndex(0))
            tryCompare(find("line"), "opened", true)
            verify(find("line").line.includes("bus-off"))
        }
    }
}

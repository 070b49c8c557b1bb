import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0

Item {
    width: 800
    height: 480

    Service {
        id: service
        anchors.fill: parent
        page: "threads"
    }
    ThreadsModel { id: threads }

    TestCase {
        name: "Threads"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function find(name) {
            return findChild(service, name)
        }

        function test_aStalledThreadShowsItsCalls() {
            if (!threads.isEnabled)
                skip("This build watches no threads")
            setup.stallThread()
            tryCompare(find("threads.summary"), "text", "A thread has stalled")
            const row = findChild(find("threads.list"), "threads.row.0")
            compare(row.text, "Boiler")
            mouseClick(row)
            const calls = findChild(find("threads.list"), "threads.calls")
            tryVerify(() => calls.visible && calls.text.indexOf("acquire") > 0)
            mouseClick(row)
            verify(!calls.visible)
        }

        function test_aBuildWithoutTheMonitorSaysHowToGetIt() {
            if (threads.isEnabled)
                skip("This build watches threads")
            verify(find("threads.none").visible)
            verify(find("threads.none").text.indexOf("ZELTOOLS_MONITORING") > 0)
        }
    }
}

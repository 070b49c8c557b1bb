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
        page: "time"
    }

    TestCase {
        name: "Time"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function find(name) {
            return findChild(service, name)
        }

        function init() {
            service.dateTimeManager = setup.makeClock() // It begins at 31/01/2024 09:58.
            service.accessLevel = Access.Operator
            service.user = "Anna"
            mouseClick(find("time.tabs.0"))
        }

        function test_wheelsSetTheClock() {
            const hour = find("time.hour")
            const minute = find("time.minute")
            tryCompare(hour, "value", 9)
            verify(!find("time.set").enabled)
            const year = find("time.year")
            year.show(1970) // as after a start without a battery
            compare(year.value, 2000)
            year.show(2024)
            mouseClick(hour, hour.width / 2, hour.height - 24) // the last row, two numbers ahead
            tryCompare(hour, "value", 11)
            mouseDrag(minute, minute.width / 2, 150, 0, -96, Qt.LeftButton, Qt.NoModifier, 50)
            tryVerify(() => minute.value !== 58)
            const dragged = minute.value
            keyClick(Qt.Key_Down)
            tryCompare(minute, "value", (dragged + 1) % 60)

            service.accessLevel = Access.ReadOnly
            mouseClick(find("time.set"))
            compare(find("notice").text, "Only an operator may change this.")
            compare(service.dateTimeManager.currentDateTime.getHours(), 9)

            service.accessLevel = Access.Operator
            mouseClick(find("time.set"))
            const now = service.dateTimeManager.currentDateTime
            compare([now.getHours(), now.getMinutes()], [11, minute.value])
            verify(/Clock set from 2024-01-31 09:58:\d\d to 2024-01-31 11:\d\d:00 \(by Anna\)/.test(setup.events()))
            verify(!find("time.undo").visible)
        }

        function test_aDayStaysInItsMonth() {
            mouseClick(find("time.month")) // the middle row, for the keys
            keyClick(Qt.Key_Down)
            tryCompare(find("time.month"), "value", 2)
            tryCompare(find("time.day"), "value", 29)
            mouseClick(find("time.undo"))
            tryCompare(find("time.day"), "value", 31)
            compare(find("time.month").value, 1)
        }

        function test_zonesByAreaAndBySearch() {
            mouseClick(find("time.tabs.1"))
            waitForRendering(service)
            mouseClick(find("time.area.Africa"))
            tryVerify(() => find("time.zone.Africa/Abidjan") !== null)
            service.accessLevel = Access.ReadOnly
            mouseClick(find("time.zone.Africa/Abidjan"))
            compare(find("notice").text, "Only an operator may change this.")

            mouseClick(find("time.search"))
            for (const letter of "new y")
                keyClick(letter)
            tryCompare(find("time.zones"), "count", 1)
            verify(find("time.zone.America/New_York") !== null)
            verify(!find("time.areas").visible)
            mouseClick(find("time.search.clear"))
            verify(find("time.areas").visible)
        }

        function test_eachLanguageFits_data() { // A binding loop is a warning, and ends the test.
            return ["de", "it", "ar", "en"].map(code => ({ tag: code }))
        }

        function test_eachLanguageFits(row) {
            service.language = row.tag
            waitForRendering(service, 100)
        }

        function test_whatIsMissingIsNamed() {
            mouseClick(find("time.tabs.2"))
            compare(find("time.packages").count, 3)
        }
    }
}

import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0

Service {
    id: service

    function find(name) {
        return test.findChild(service.currentPage, name)
    }

    width: 800
    height: 480
    language: "en"

    TestCase {
        id: test
        name: "Overview"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function init() {
            service.page = "overview"
        }

        function test_tilesLeadToPages_data() {
            return ["log", "machine", "time", "threads", "switches", "files", "kernel", "support"]
                .map(name => ({ tag: name, page: name })).concat({ tag: "crash", page: "files" })
        }

        function test_tilesLeadToPages(row) {
            const tile = find("overview." + row.tag)
            verify(tile.width >= 48 && tile.y + tile.height <= service.currentPage.height)
            mouseClick(tile)
            compare(service.page, row.page)
            compare(row.page === "files" && service.currentPage.showsCrashes, row.tag === "crash")
        }

        function test_facts() {
            compare(find("overview.log").text, "All written")
            compare(find("overview.crash").text, "None")
            // The computer may have started less than an hour ago.
            verify(/^(\d+ (d|h|min) )?\d+ (h|min|s)$/.test(find("overview.kernel").text))
            verify(find("overview.support").detail.includes("ZelTools " + Library.version))
        }
    }
}

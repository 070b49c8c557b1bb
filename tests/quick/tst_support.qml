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
        page: "support"
    }

    TestCase {
        name: "Support"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function find(name) {
            return findChild(service, name)
        }

        function init() {
            setup.writeFile("stick/keep", "")
            service.bundleFolder = setup.folder + "/stick"
            tryVerify(() => find("support.start").enabled)
        }

        function test_aBundleIsMade() {
            mouseClick(find("support.start"))
            tryVerify(() => find("support.result").text === "The bundle is complete.", 30000)
            const name = find("support.file").text
            verify(/^zeltools-.*[.]tar[.]zst$/.test(name))
            verify(setup.exists("stick/" + name))
        }

        function test_aBundleGoesOnBehindOtherPages() {
            mouseClick(find("support.start"))
            const name = find("support.file").text
            service.page = "events"
            service.page = "support"
            compare(find("support.file").text, name)
            tryVerify(() => find("support.result").text === "The bundle is complete.", 30000)
            verify(setup.exists("stick/" + name))
        }

        function test_aBundleIsCancelled() {
            mouseClick(find("support.start"))
            verify(find("support.cancel").visible)
            mouseClick(find("support.cancel"))
            tryVerify(() => find("support.result").text === "Cancelled. No file was left.", 30000)
            verify(find("support.start").visible)
            verify(!setup.exists("stick/" + find("support.file").text))
        }

        function test_aFolderThatIsGone() {
            setup.removeFolder("stick")
            mouseClick(find("support.start"))
            tryVerify(() => find("support.start").visible && find("support.result").text !== "", 30000)
            verify(find("support.result").text.indexOf("complete") < 0)
        }
    }
}

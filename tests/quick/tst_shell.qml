import QtQuick 2.15
import QtTest 1.15
import ZelTools 1.0
import ZelTools.Service 1.0
import ZelTools.Style 1.0

Item {
    id: root
    width: 800
    height: 480

    Service {
        id: service
        anchors.fill: parent
    }

    TestCase {
        name: "Shell"
        // A new language evaluates all bindings anew: the tests must not run inside of one.
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function cleanup() {
            service.language = "en"
            service.accessLevel = Access.ReadOnly
            service.user = ""
            resize(800, 480)
        }

        function resize(width, height) {
            root.width = width
            root.height = height
        }

        // The texts below the item of which a part is not shown.
        function cutTexts(item) {
            let texts = item.visible && item.truncated ? [item.text] : []
            for (let i = 0; i < item.children.length; ++i)
                texts = texts.concat(cutTexts(item.children[i]))
            return texts
        }

        // The controls below the item that a screen reader could not name.
        function namelessControls(item) {
            const isControl = item.visible && item.hovered !== undefined && (item.clicked || item.displayText !== undefined)
            let names = isControl && !item.Accessible.name && !item.text ? [item.objectName || String(item)] : []
            for (let i = 0; i < item.children.length; ++i)
                names = names.concat(namelessControls(item.children[i]))
            return names
        }

        function test_eachPageOpensByATap_data() {
            return ["events", "log", "switches", "machine", "threads", "kernel", "files", "time", "support",
                    "overview"].map(name => ({ tag: name }))
        }

        function test_eachPageOpensByATap(row) {
            const before = service.currentPage
            const button = findChild(service, "rail." + row.tag)
            verify(button.width >= 44 && button.height >= 44)
            mouseClick(button)
            compare(service.page, row.tag)
            verify(service.currentPage !== before)
            compare(service.currentPage.service, service)
            compare(namelessControls(service), [])
            verify(service.currentPage.title !== "" && service.currentPage.icon !== "")
            for (const language of Library.languages.concat("en")) {
                service.language = language
                for (const size of [[1280, 800], [800, 480]]) {
                    resize(size[0], size[1])
                    waitForRendering(service)
                    if (row.tag === "overview")
                        compare(cutTexts(service), [], language + size)
                }
            }
        }

        function test_theScreenMirrors() {
            const place = name => findChild(service, name).mapToItem(service, 0, 0).x
            verify(place("rail.log") < place("header.close"))
            service.page = "time"
            mouseClick(findChild(service, "time.tabs.1"))
            service.language = "ar"
            tryVerify(() => place("rail.log") > place("header.close"))
            compare(findChild(service, "time.tabs").currentIndex, 1)
        }

        function test_headerSaysWhoMayChangeSomething() {
            const chip = findChild(service, "header.access")
            compare(chip.text, "Read only")
            service.accessLevel = Access.Technician
            service.user = "Anna"
            compare(chip.text, "Anna · Technician")
            compare(Library.access.level, Access.Technician)
            compare(Library.access.user, "Anna")
            service.user = "\n\u202eAnna"
            verify(chip.height < 44 && chip.width < 300)
            compare(findChild(chip, "chip.text").text, "  Anna · Technician")
            Library.access.level = Access.Operator
            compare(service.accessLevel, Access.Operator)
            service.accessLevel = Access.Technician
            compare(Library.access.level, Access.Technician)

            // The next screen takes back what this one allowed, although it sets the initial values.
            createTemporaryQmlObject("import ZelTools 1.0; import ZelTools.Service 1.0;"
                                     + "Service { accessLevel: Access.ReadOnly; user: ''; language: '' }", service)
            compare(chip.text, "Read only")
            compare(service.user + Library.access.level + Library.language, "0")
        }

        function test_aQuestionThatNoLongerHoldsIsWithdrawn_data() {
            return [{ tag: "page", value: "overview" }, { tag: "accessLevel", value: Access.Operator },
                    { tag: "user", value: "Bob" }, { tag: "language", value: "de" }]
        }

        function test_aQuestionThatNoLongerHoldsIsWithdrawn(row) {
            service.page = "log"
            service.confirm("Delete?", "It is lost.", "Delete", () => fail("There is nobody to ask"))
            const question = findChild(service, "question")
            tryCompare(question, "opened", true)
            service[row.tag] = row.value
            tryCompare(question, "visible", false)
        }

        function test_questionsAndNotices() {
            let count = 0
            const question = findChild(service, "question")
            const tap = name => mouseClick(findChild(question.contentItem, name))
            const answers = [() => keyClick(Qt.Key_Escape), () => tap("dialog.reject"), () => tap("dialog.accept")]
            for (const answer of answers) {
                compare(count, 0)
                service.confirm("Delete?", "It is lost.\n".repeat(99), "Delete", () => ++count)
                tryCompare(question, "opened", true)
                verify(question.height < 480)
                answer()
                tryCompare(question, "visible", false)
            }
            compare(count, 1)

            const notice = findChild(service, "notice")
            service.report("<b>No</b>", "Done")
            compare(notice.text, "<b>No</b>")
            verify(notice.isBad)
            service.report("", "Done")
            compare(notice.text, "Done")
            verify(!notice.isBad)
            tryCompare(notice, "opacity", 1)
            mouseClick(notice)
            tryCompare(notice, "visible", false)
        }
    }
}

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
    }

    TestCase {
        name: "Files"
        when: false
        onWindowShownChanged: Qt.callLater(() => when = true)

        function find(name) {
            return findChild(service, name)
        }

        function open(name) {
            tryVerify(() => find("files.row." + name) !== null && find("files.row." + name).width > 0)
            mouseClick(find("files.row." + name))
        }

        function read(name) {
            open(name)
            tryVerify(() => find("files.delete").mapToItem(service, 0, 0).x > 600)
        }

        function init() {
            setup.writeFile("shown/inner/deep.txt", "deep")
            setup.writeFile("shown/a.log", "<b>bold</b>\n" + "x".repeat(1200))
            setup.writeFile("shown/long.log", "first\n".repeat(50000) + "last")
            service.folders = [setup.folder + "/shown", setup.folder + "/other"]
            service.accessLevel = Access.Technician
            service.user = "Anna"
            service.page = "files"
        }

        function cleanup() {
            service.page = "overview"
        }

        function test_withoutFoldersTheLogsAreShown() {
            service.folders = []
            compare(find("files.roots").model.slice(0, 2), ["debug", "events"])
        }

        function test_textsAreShownAsTheyAre() {
            read("a.log")
            const text = find("files.text")
            tryCompare(text, "count", 4) // The long line takes three rows.
            compare(text.itemAtIndex(0).text, "<b>bold</b>")
            compare(text.itemAtIndex(0).textFormat, Text.PlainText)
            mouseClick(find("files.back"))
            read("long.log")
            verify(text.count > 40000)
            mouseClick(find("files.last"))
            compare(text.model[text.count - 1], "last")
            setup.writeFile("shown/long.log", "x".repeat(600000) + "\nnewest") // while it is open
            mouseClick(find("files.before"))
            mouseClick(find("files.last"))
            mouseClick(find("files.last"))
            compare(text.model[text.count - 1], "newest")
            mouseDrag(text, 300, 250, 0, -200, Qt.LeftButton, Qt.NoModifier, 20)
            verify(text.contentY > 0)
        }

        function test_foldersAreEnteredAndMayVanish() {
            open("inner")
            tryVerify(() => find("files.row.deep.txt") !== null)
            setup.removeFolder("shown/inner")
            tryVerify(() => find("files.gone").visible)
            compare(find("files.gone").title, "The folder cannot be read")
            setup.writeFile("shown/inner/back.txt", "back")
            tryVerify(() => find("files.row.back.txt") !== null)
            mouseClick(find("files.up"))
            tryVerify(() => find("files.row.a.log") !== null)
            mouseClick(find("files.roots.1"))
            tryVerify(() => find("files.gone").visible)
        }

        function test_theQuestionShowsNoForgedName() {
            setup.writeFile("shown/forged\u202egol.exe", "")
            read("forged\u202egol.exe")
            mouseClick(find("files.delete"))
            const question = find("question")
            tryCompare(question, "opened", true)
            compare(question.text, "forged gol.exe")
            question.close()
            setup.removeFolder("shown")
        }

        function test_deletionIsConfirmedAndSaysWho() {
            read("a.log")
            service.accessLevel = Access.Operator
            mouseClick(find("files.delete"))
            compare(find("notice").text, "Only a technician may change this.")
            verify(setup.exists("shown/a.log"))

            service.accessLevel = Access.Technician
            mouseClick(find("files.delete"))
            const question = find("question")
            tryCompare(question, "opened", true)
            mouseClick(findChild(question.contentItem, "dialog.accept"))
            verify(!setup.exists("shown/a.log"))
            tryCompare(find("files.list"), "count", 2)
            verify(setup.events().indexOf("/shown/a.log deleted (by Anna)") > 0)
        }
    }
}

import QtQuick 2.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "shell"

// The service screen: what the library knows about the machine, on the machine's display. A host
// places it in a window of its own, of at least 800x480, and sets the access level of
// the user; closed() asks to leave.
FocusScope {
    id: service

    // The access level and the name of the user. Both belong to Library.access, which exists once in
    // the process: they outlive the screen, and all screens share them.
    property alias accessLevel: settings.level
    property alias user: settings.user
    // The source of the date and time, if it is not the system's clock.
    property DateTimeManager dateTimeManager: null
    // The file that keeps changed switches; without one they last until the application ends.
    property string environmentFile
    // The folders of the page of files; empty stands for those of log files and crash reports.
    property var folders: []
    // The folder for support bundles; empty lets the user choose a stick.
    property string bundleFolder
    property bool dark: Theme.dark // The palette is one for all screens.
    // The language of the texts, one of Library.languages; empty stands for that of the system.
    property alias language: settings.language
    // The name of the page: overview, events, log, switches, machine, threads, kernel, files, time, support.
    property string page: "overview"
    readonly property bool isWide: width >= 1000
    readonly property bool mirrors: Library.rightToLeft || locale.textDirection === Qt.RightToLeft
    readonly property var locale: language ? Qt.locale(language) : Qt.locale()
    readonly property Item currentPage: loader.item as Item
    readonly property BundleTask bundle: bundleTask

    signal closed()

    // Shows a message for a moment.
    function notice(text) {
        toast.show(text, false)
    }
    // Shows why something was refused. With an empty reason it shows the text instead, if there is one.
    function report(reason, text) {
        if (reason || text)
            toast.show(reason || text, reason !== "")
    }
    // Asks before something is done that cannot be undone; calls `accepted` after the user agreed.
    // The question is withdrawn when the page, the access or the language changes.
    function confirm(title, text, acceptText, accepted) {
        question.ask(title, text, acceptText, accepted)
    }

    function load() {
        question.close()
        loader.setSource("pages/" + catalogue.entry(page).file, { service: service })
    }

    onAccessLevelChanged: question.close()
    onUserChanged: question.close()
    onLanguageChanged: question.close()
    onDarkChanged: Theme.dark = dark
    onPageChanged: if (loader.status !== Loader.Null) // otherwise the first page follows below
        load()
    Component.onCompleted: {
        Theme.dark = dark
        load()
    }
    LayoutMirroring.enabled: mirrors
    LayoutMirroring.childrenInherit: true

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }
    Rail {
        id: rail
        anchors.left: parent.left
        height: parent.height
        isWide: service.isWide
        pages: catalogue.pages
        current: service.page
        onPicked: name => service.page = name
    }
    ScreenHeader {
        id: header
        anchors.left: rail.right
        anchors.right: parent.right
        title: catalogue.entry(service.page).title
        dateTimeManager: service.dateTimeManager
        locale: service.locale
        onClosed: service.closed()
    }
    Loader {
        id: loader
        anchors.left: rail.right
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        focus: true
    }
    Notice {
        id: toast
        objectName: "notice"
        anchors.horizontalCenter: loader.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 2 * Theme.unit
    }
    Question {
        id: question
        objectName: "question"
        mirrors: service.mirrors
    }
    Catalogue {
        id: catalogue
    }
    ScreenSettings {
        id: settings
    }
    BundleTask {
        id: bundleTask
    }
}

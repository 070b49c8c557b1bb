import QtQuick 2.15

// The pages of the service screen, in the order of the rail.
QtObject {
    //: The names of pages stand below icons, too, where about ten letters have room.
    readonly property var pages: [
        { name: "overview", file: "OverviewPage.qml", icon: "view-dashboard", title: qsTr("Overview") },
        { name: "events", file: "EventsPage.qml", icon: "calendar-text", title: qsTr("Events") },
        { name: "log", file: "LogPage.qml", icon: "file-document", title: qsTr("Log") },
        { name: "switches", file: "SwitchesPage.qml", icon: "tune", title: qsTr("Switches") },
        { name: "machine", file: "MachinePage.qml", icon: "sitemap", title: qsTr("Machine") },
        { name: "threads", file: "ThreadsPage.qml", icon: "heart-pulse", title: qsTr("Threads") },
        { name: "kernel", file: "KernelPage.qml", icon: "linux", title: qsTr("Kernel") },
        { name: "files", file: "FilesPage.qml", icon: "folder", title: qsTr("Files") },
        { name: "time", file: "TimePage.qml", icon: "clock", title: qsTr("Date and time"), short: qsTr("Time") },
        { name: "support", file: "SupportPage.qml", icon: "usb", title: qsTr("Support") }
    ]

    // A name that is none of a page stands for the first page.
    function entry(name) {
        return pages.find(page => page.name === name) || pages[0]
    }
}

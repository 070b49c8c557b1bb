import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The state of the machine at a glance. Each tile leads to the page that says more.
ServicePage {
    id: page

    readonly property Monitor monitor: Library.monitor
    readonly property LogManager logManager: Library.logManager // null in a program without log files

    function showCrashes() {
        const screen = service // This page goes with the next line.
        screen.page = "files"
        const target = screen.currentPage as ServicePage
        target.showPart("crashes")
    }

    title: qsTr("Overview")
    icon: "view-dashboard"

    MachineInfo { id: machine }
    LossesModel { id: losses }
    CrashReportsModel { id: crashes }
    ThreadsModel { id: threads }
    MachinesModel { id: machines }
    SwitchesModel {
        id: changes
        onlyChanged: true
        showHidden: true
    }
    Clock {
        id: clock
        dateTimeManager: page.service.dateTimeManager
    }

    GridLayout {
        anchors { fill: parent; leftMargin: page.gap; rightMargin: page.gap; bottomMargin: page.gap }
        columns: 3
        columnSpacing: page.gap / 2 + Theme.unit / 2
        rowSpacing: columnSpacing

        OverviewTile {
            objectName: "overview.log"
            isWide: page.isWide
            icon.name: "file-document"
            caption: qsTr("Log files")
            isBad: page.logManager !== null && !page.logManager.logFilesHealthy
            text: page.logManager === null ? qsTr("None") : isBad ? qsTr("Failing") : qsTr("All written")
            detail: page.logManager === null ? qsTr("This program has no folders for log files.")
                  : losses.total > 0 ? qsTr("Lines lost: %1").arg(Formats.number(losses.total, page.locale)) : qsTr("No line lost")
            onClicked: page.service.page = "log"

            Repeater {
                model: LogFilesModel {}

                Label {
                    required property string name
                    required property string problem
                    required property bool isHealthy

                    Layout.fillWidth: true
                    color: Theme.bad
                    font.pixelSize: Theme.fontSmall
                    text: name + ": " + problem
                    visible: !isHealthy
                }
            }
        }
        OverviewTile {
            objectName: "overview.machine"
            isWide: page.isWide
            icon.name: "sitemap"
            caption: qsTr("State machines")
            text: machines.count === 0 ? qsTr("None shown") : ""
            detail: machines.count === 0 ? qsTr("The application offers none.") : ""
            onClicked: page.service.page = "machine"

            Repeater {
                model: machines

                Label {
                    required property string name
                    required property string state
                    required property bool isRunning
                    required property int index

                    Layout.fillWidth: true
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Theme.fontSmall
                    text: isRunning ? qsTr("%1: %2").arg(name).arg(state) : qsTr("%1: stopped").arg(name)
                    visible: index < 3
                }
            }
        }
        OverviewTile {
            objectName: "overview.time"
            isWide: page.isWide
            icon.name: "clock"
            caption: qsTr("Date and time")
            text: Formats.shortTime(clock.dateTime, page.locale)
            detail: (page.isWide ? Formats.longDay(clock.dateTime, page.locale) : Formats.day(clock.dateTime, page.locale))
                    + "\n" + clock.timeZone
            onClicked: page.service.page = "time"
        }
        OverviewTile {
            objectName: "overview.threads"
            isWide: page.isWide
            icon.name: "heart-pulse"
            caption: qsTr("Threads")
            isBad: page.monitor.hasStalledThread
            text: !threads.isEnabled ? qsTr("Not watched") : isBad ? qsTr("One has stalled")
                  : page.monitor.hasLateThread ? qsTr("One is late") : qsTr("All on time")
            detail: threads.isEnabled ? qsTr("%1 watched").arg(Formats.number(threads.count, page.locale))
                                      : qsTr("The library was built without the monitor.")
            onClicked: page.service.page = "threads"
        }
        OverviewTile {
            objectName: "overview.crash"
            isWide: page.isWide
            icon.name: "bug"
            caption: qsTr("Last crash")
            text: crashes.count > 0 ? Formats.day(crashes.newestTime, page.locale) : crashes.isLoading ? "…" : qsTr("None")
            detail: crashes.count === 0 ? (crashes.isLoading ? "" : qsTr("There is no crash report."))
                                        : Formats.timeOfDay(crashes.newestTime, page.locale) + "\n" + crashes.newest
            onClicked: page.showCrashes()
        }
        OverviewTile {
            objectName: "overview.switches"
            isWide: page.isWide
            icon.name: "tune"
            caption: qsTr("Switches")
            text: changes.count === 0 ? qsTr("Defaults") : qsTr("%1 changed").arg(Formats.number(changes.count, page.locale))
            detail: (machine.model ? qsTr("Model %1").arg(machine.model) + "\n" : "")
                    + (machine.build === "board" ? qsTr("Board build") : qsTr("Desktop build"))
            onClicked: page.service.page = "switches"
        }
        OverviewTile {
            objectName: "overview.files"
            isWide: page.isWide
            icon.name: "harddisk"
            caption: qsTr("Memory and disk")
            isBad: memory.isShort || disk.isShort
            onClicked: page.service.page = "files"

            UsageBar {
                id: memory
                isWide: page.isWide
                available: machine.memoryAvailable
                locale: page.locale
                name: qsTr("Memory")
                total: machine.memoryTotal
            }
            UsageBar {
                id: disk
                isWide: page.isWide
                available: machine.diskAvailable
                locale: page.locale
                name: qsTr("Disk")
                total: machine.diskTotal
            }
        }
        OverviewTile {
            objectName: "overview.kernel"
            isWide: page.isWide
            icon.name: "power"
            caption: qsTr("Running for")
            text: Library.duration(1000 * machine.uptimeSeconds)
            detail: qsTr("%1, Linux %2").arg(machine.hostName).arg(machine.kernelVersion)
            onClicked: page.service.page = "kernel"
        }
        OverviewTile {
            objectName: "overview.support"
            isWide: page.isWide
            icon.name: "package-variant-closed"
            caption: qsTr("Software")
            text: machine.applicationVersion || qsTr("No version")
            detail: qsTr("%1\nZelTools %2, Qt %3").arg(machine.applicationName).arg(machine.libraryVersion).arg(machine.qtVersion)
            onClicked: page.service.page = "support"
        }
    }
}

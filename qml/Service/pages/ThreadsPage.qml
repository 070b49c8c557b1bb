import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The threads that the library watches: whether they work, and the calls in which one has stalled.
ServicePage {
    id: page

    readonly property Monitor monitor: Library.monitor

    title: qsTr("Threads")
    icon: "heart-pulse"

    ThreadsModel {
        id: threads
        isLive: page.visible
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: page.gap
        anchors.rightMargin: page.gap
        visible: threads.count > 0
        spacing: Theme.unit

        RowLayout {
            Layout.minimumHeight: Theme.touch
            spacing: 1.5 * Theme.unit

            Chip {
                objectName: "threads.summary"
                iconName: page.monitor.hasStalledThread ? "alert-circle" : page.monitor.hasLateThread ? "alert" : "check-circle"
                tone: page.monitor.hasStalledThread ? Theme.bad : page.monitor.hasLateThread ? Theme.warning : Theme.good
                text: page.monitor.hasStalledThread ? qsTr("A thread has stalled")
                    : page.monitor.hasLateThread ? qsTr("A thread is late") : qsTr("All threads work")
            }
            Label {
                Layout.fillWidth: true
                muted: true
                font.pixelSize: Theme.fontSmall
                text: qsTr("Recovered since the start: %1").arg(Formats.number(page.monitor.recoveriesCount, page.locale))
            }
        }
        TouchList {
            objectName: "threads.list"
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: threads
            currentIndex: -1
            delegate: ThreadRow {
                width: ListView.view.width
                locale: page.locale
                isOpen: ListView.isCurrentItem
                onClicked: ListView.view.currentIndex = isOpen ? -1 : index
            }
        }
    }
    EmptyState {
        objectName: "threads.none"
        anchors.fill: parent
        visible: threads.count === 0
        icon: page.icon
        title: threads.isEnabled ? qsTr("No thread has registered") : qsTr("Threads are not watched")
        text: threads.isEnabled
              ? qsTr("The application registers its threads with the library's Monitor, or starts them as MonitoredQThread.")
              : qsTr("This build of the library watches no threads. The CMake option ZELTOOLS_MONITORING builds one that does.")
    }
}

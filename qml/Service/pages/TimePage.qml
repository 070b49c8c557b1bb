import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The date and time and what keeps them right. An operator may set them.
ServicePage {
    id: timePage

    title: qsTr("Date and time")
    icon: "clock"

    Clock {
        id: pageClock
        dateTimeManager: timePage.service.dateTimeManager
    }
    ColumnLayout {
        anchors.fill: parent
        anchors.leftMargin: timePage.gap
        anchors.rightMargin: timePage.gap
        anchors.bottomMargin: timePage.gap
        spacing: Theme.unit

        Tabs {
            id: tabs
            objectName: "time.tabs"
            Layout.fillWidth: true
            model: [qsTr("Clock"), qsTr("Time zone"), qsTr("Network time")]
        }
        Loader {
            Layout.fillWidth: true
            Layout.fillHeight: true
            sourceComponent: [clockPart, zonePart, networkPart][tabs.currentIndex]
        }
    }
    Component {
        id: clockPart
        ClockSetting {
            page: timePage
            clock: pageClock
        }
    }
    Component {
        id: zonePart
        ZoneChoice {
            page: timePage
            clock: pageClock
        }
    }
    Component {
        id: networkPart
        NetworkTime {
            page: timePage
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The time zones of the machine: by area and location, or by a search over all of them.
ColumnLayout {
    id: root

    required property ServicePage page
    required property Clock clock
    property string area: clock.timeZone.split("/")[0]

    function choose(zone) {
        page.service.report(clock.setTimeZone(zone), qsTr("The time zone is now %1.").arg(zone))
    }

    spacing: Theme.unit

    TimeZonesModel { id: areas }
    TimeZonesModel {
        id: zones
        area: search.text ? "" : root.area
        filter: search.text
    }
    RowLayout {
        visible: areas.count > 0
        spacing: root.page.gap

        SearchField {
            id: search
            objectName: "time.search"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
        Label {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            muted: true
            text: root.clock.timeZone + " · " + Formats.clockOffset(root.clock.offsetText, root.page.locale)
        }
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.fillHeight: true
        visible: areas.count > 0
        spacing: root.page.gap

        TouchList {
            objectName: "time.areas"
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
            visible: !search.text
            model: areas
            delegate: ListRow {
                required property string name
                required property bool isCurrent

                objectName: "time.area." + name
                width: ListView.view.width
                highlighted: root.area === name
                icon.name: "earth"
                iconColor: isCurrent ? Theme.accent : Theme.textMuted
                text: name
                onClicked: root.area = name
            }
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1

            TouchList {
                objectName: "time.zones"
                anchors.fill: parent
                model: zones
                delegate: ListRow {
                    id: row
                    required property string name
                    required property string zone
                    required property int offsetMinutes
                    required property bool isCurrent

                    objectName: "time.zone." + zone
                    width: ListView.view.width
                    text: name
                    onClicked: root.choose(zone)

                    Label {
                        muted: true
                        text: Formats.offset(row.offsetMinutes, root.page.locale)
                    }
                    Icon {
                        name: "check"
                        color: Theme.accent
                        opacity: row.isCurrent ? 1 : 0
                    }
                }
            }
            EmptyState {
                anchors.fill: parent
                visible: zones.count === 0
                icon: search.text ? "magnify" : "earth"
                title: search.text ? qsTr("No such time zone") : qsTr("Choose an area")
            }
        }
    }
    EmptyState {
        Layout.fillWidth: true
        Layout.fillHeight: true
        visible: areas.count === 0
        icon: "earth"
        title: qsTr("This machine has no time zones")
        text: qsTr("Add the package tzdata to its image: apt install tzdata.")
    }
}

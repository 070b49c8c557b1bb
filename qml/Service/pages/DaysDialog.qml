import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// Chooses a range of days: one that ends today, or one that two taps in a calendar mark. Its title is
// the month that the calendar shows. chosen() has the days as dd/MM/yyyy, or empty for all days.
Dialog {
    id: dialog

    property var region: Qt.locale() // Has the names of months and days.
    property date today
    property date month: today
    property string from // These two are yyyy-MM-dd, the texts that can be compared.
    property string to

    signal chosen(string from, string to)

    function show(now: date, chosenFrom: string, chosenTo: string) {
        today = month = now
        from = chosenFrom.split("/").reverse().join("-")
        to = chosenTo.split("/").reverse().join("-")
        open()
    }

    function chooseLast(days: int) {
        to = iso(today)
        from = iso(new Date(today.getFullYear(), today.getMonth(), today.getDate() - days + 1, 12)) // Midnight may not exist.
        accept()
    }

    function iso(day: date): string {
        return Qt.formatDate(day, "yyyy-MM-dd")
    }

    // The first tap marks a day, the second one makes it a range.
    function tap(day: string) {
        if (from === "" || from !== to)
            from = to = day
        else if (day < from)
            from = day
        else
            to = day
    }

    function turn(months: int) {
        month = new Date(month.getFullYear(), month.getMonth() + months, 1, 12)
    }

    title: month.toLocaleDateString(region, "MMMM yyyy")
    width: 72 * Theme.unit // The days are as wide as a finger.
    onAccepted: chosen(from.split("-").reverse().join("/"), to.split("-").reverse().join("/"))

    RowLayout {
        spacing: 2 * Theme.unit

        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            Layout.fillHeight: false
            Layout.fillWidth: false
            Layout.preferredWidth: 20 * Theme.unit
            spacing: Theme.unit

            RowLayout {
                spacing: Theme.unit

                IconButton {
                    Layout.fillWidth: true
                    objectName: "days.before"
                    icon.name: "chevron-left"
                    text: qsTr("Previous month")
                    onClicked: dialog.turn(-1)
                }
                IconButton {
                    Layout.fillWidth: true
                    objectName: "days.after"
                    icon.name: "chevron-right"
                    text: qsTr("Next month")
                    onClicked: dialog.turn(1)
                }
            }
            Button {
                Layout.fillWidth: true
                objectName: "days.all"
                text: qsTr("All days")
                onClicked: {
                    dialog.from = dialog.to = ""
                    dialog.accept()
                }
            }
            Repeater {
                model: [1, 7, 30]

                Button {
                    required property int modelData

                    Layout.fillWidth: true
                    objectName: "days.last" + modelData
                    text: modelData === 1 ? qsTr("Today") : Formats.digits(qsTr("Last %n day(s)", "", modelData), dialog.region)
                    onClicked: dialog.chooseLast(modelData)
                }
            }
        }
        Item { // Keeps the width of the days, which follows from that of the month, out of the layout.
            Layout.fillWidth: true
            Layout.preferredHeight: grid.height

            MonthGrid {
                id: grid
                width: parent.width
                locale: dialog.region
                month: dialog.month
                from: dialog.from
                to: dialog.to
                onTapped: day => dialog.tap(day)
            }
        }
    }
}

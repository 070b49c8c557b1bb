import QtQuick 2.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// One month of days to tap on, in which the days of a range are marked. Weeks begin as the locale
// has it. Days are texts in the form yyyy-MM-dd.
Grid {
    id: grid

    required property date month
    required property string from
    required property string to
    required property var locale
    readonly property int year: month.getFullYear()
    readonly property int monthIndex: month.getMonth()
    readonly property int lead: (new Date(year, monthIndex, 1, 12).getDay() - locale.firstDayOfWeek + 7) % 7

    signal tapped(string day)

    columns: 7

    Repeater {
        model: 7

        Label {
            required property int index

            width: grid.width / 7
            height: 3 * Theme.unit
            font.pixelSize: Theme.fontSmall
            horizontalAlignment: Text.AlignHCenter
            muted: true
            text: grid.locale.standaloneDayName((index + grid.locale.firstDayOfWeek) % 7, Locale.NarrowFormat)
        }
    }
    Repeater {
        model: 42

        MonthDay {
            required property int index

            width: grid.width / 7
            day: new Date(grid.year, grid.monthIndex, 1 + index - grid.lead, 12) // Midnight may not exist.
            isMarked: iso >= grid.from && iso <= grid.to
            isOutside: day.getMonth() !== grid.monthIndex
            text: Formats.number(day.getDate(), grid.locale)
            onClicked: grid.tapped(iso)
        }
    }
}

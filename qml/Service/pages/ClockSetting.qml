import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The present time, and wheels that choose another one. The wheels follow the clock until a finger
// turns one of them.
RowLayout {
    id: root

    required property ServicePage page
    required property Clock clock
    property bool isTurned: false

    function showPresent() {
        const now = clock.dateTime
        year.show(now.getFullYear())
        month.show(now.getMonth() + 1)
        day.show(now.getDate())
        hour.show(now.getHours())
        minute.show(now.getMinutes())
        isTurned = false
    }

    // The month that was turned to may be shorter.
    function turn() {
        isTurned = true
        const lastDay = new Date(year.value, month.value, 0, 12).getDate() // Midnight may not exist.
        if (day.value > lastDay)
            day.show(lastDay)
    }

    function setClock() {
        const reason = clock.set(new Date(year.value, month.value - 1, day.value, hour.value, minute.value))
        page.service.report(reason, qsTr("The clock is set."))
        if (!reason)
            showPresent()
    }

    spacing: page.gap
    Component.onCompleted: showPresent()

    Connections {
        target: root.clock
        function onDateTimeChanged() {
            if (!root.isTurned)
                root.showPresent()
        }
    }
    Card {
        Layout.fillHeight: true
        Layout.preferredWidth: root.page.isWide ? 42 * Theme.unit : 24 * Theme.unit
        padding: root.page.isWide ? 3 * Theme.unit : 2 * Theme.unit

        Label {
            objectName: "time.now"
            Layout.fillWidth: true
            text: Formats.shortTime(root.clock.dateTime, root.page.locale)
            font.pixelSize: root.page.isWide ? 2 * Theme.fontDisplay : Theme.fontDisplay
            fontSizeMode: Text.HorizontalFit
        }
        Label {
            Layout.fillWidth: true
            text: Formats.longDay(root.clock.dateTime, root.page.locale)
            wrapMode: Text.Wrap
        }
        Item { Layout.fillHeight: true }
        Label {
            Layout.fillWidth: true
            text: root.clock.timeZone
        }
        Label {
            Layout.fillWidth: true
            muted: true
            text: Formats.clockOffset(root.clock.offsetText, root.page.locale)
        }
    }
    Card {
        Layout.fillWidth: true
        Layout.fillHeight: true

        Item { Layout.fillHeight: true; visible: root.page.isWide }
        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.fillHeight: false
            spacing: Theme.unit

            TimeWheel {
                id: day
                page: root.page
                objectName: "time.day"
                from: 1
                to: 31
                caption: qsTr("Day")
                onMoved: root.turn()
            }
            TimeWheel {
                id: month
                page: root.page
                objectName: "time.month"
                implicitWidth: 11 * Theme.unit
                from: 1
                to: 12
                caption: qsTr("Month")
                textOf: number => root.page.locale.standaloneMonthName(number - 1, Locale.ShortFormat)
                onMoved: root.turn()
            }
            TimeWheel {
                id: year
                page: root.page
                objectName: "time.year"
                implicitWidth: 11 * Theme.unit
                from: 2000
                to: 2099
                caption: qsTr("Year")
                textOf: number => Formats.digits(number, root.page.locale)
                onMoved: root.turn()
            }
            RowLayout { // A time of day runs from left to right in every language.
                Layout.leftMargin: Theme.unit
                LayoutMirroring.enabled: false
                LayoutMirroring.childrenInherit: true
                spacing: Theme.unit

                TimeWheel {
                    id: hour
                    page: root.page
                    objectName: "time.hour"
                    to: 23
                    caption: qsTr("Hour")
                    textOf: number => Formats.twoDigits(number, root.page.locale)
                    onMoved: root.turn()
                }
                TimeWheel {
                    id: minute
                    page: root.page
                    objectName: "time.minute"
                    caption: qsTr("Minute")
                    textOf: number => Formats.twoDigits(number, root.page.locale)
                    onMoved: root.turn()
                }
            }
        }
        Item { Layout.fillHeight: true; visible: root.page.isWide }
        RowLayout {
            Layout.fillHeight: false
            spacing: 1.5 * Theme.unit

            Item { Layout.fillWidth: true }
            Button {
                objectName: "time.undo"
                visible: root.isTurned
                text: qsTr("Undo")
                onClicked: root.showPresent()
            }
            Button {
                objectName: "time.set"
                enabled: root.isTurned
                kind: Button.Primary
                icon.name: "check"
                text: qsTr("Set the clock")
                onClicked: root.setClock()
            }
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The event history, filtered by kind and by days, in pages from the newest event on.
ServicePage {
    id: page

    function shortDay(day: string): string {
        return Formats.day(Date.fromLocaleString(Qt.locale("C"), day, "dd/MM/yyyy"), locale)
    }

    title: qsTr("Events")
    icon: "calendar-text"

    EventHistoryModel {
        id: history
    }
    Clock {
        id: clock
        dateTimeManager: page.service.dateTimeManager
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.leftMargin: page.gap
            Layout.rightMargin: page.gap
            Layout.bottomMargin: Theme.unit
            spacing: Theme.unit

            ComboBox {
                Layout.fillWidth: true
                objectName: "events.kind"
                model: history.kinds
                textRole: "name"
                valueRole: "value"
                onActivated: history.kind = currentValue
                onModelChanged: currentIndex = indexOfValue(history.kind) // It is in another language.
                Component.onCompleted: currentIndex = indexOfValue(history.kind)
            }
            Button {
                Layout.fillWidth: true
                objectName: "events.days"
                icon.name: "calendar"
                text: history.from === "" ? qsTr("All days")
                      : history.from === history.to ? page.shortDay(history.from)
                      : page.shortDay(history.from) + " – " + page.shortDay(history.to)
                onClicked: days.show(clock.dateTime, history.from, history.to)
            }
        }
        Banner {
            Layout.fillWidth: true
            objectName: "events.error"
            visible: history.status === EventHistoryModel.Failed
            text: history.error
        }
        FollowList {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            name: "events"
            newestFirst: true
            model: history

            delegate: TextRow {
                required property var model
                required time
                required property string kind
                required text

                width: ListView.view.width
                gap: page.gap
                caption: moment ? moment + "  ·  " + kind : kind
                region: page.locale
                onClicked: line.show(caption, model.fullText)
            }

            BusyMark {
                anchors.centerIn: parent
                running: loading.isLong
            }
            Timer { // A reading that takes no time needs no mark.
                id: loading
                property bool isLong: false
                interval: 300
                repeat: true
                running: history.status === EventHistoryModel.Loading && history.count === 0
                onRunningChanged: isLong = false
                onTriggered: isLong = true
            }
            EmptyState {
                anchors.fill: parent
                objectName: "events.empty"
                visible: history.status === EventHistoryModel.Ready && history.count === 0
                icon: page.icon
                title: qsTr("No events")
                text: history.kind === LogManager.AllEvent && history.from === ""
                      ? qsTr("The machine has not logged an event yet.")
                      : qsTr("No event matches the filters above. Choose another kind or more days.")
            }
        }
        PageTurner {
            Layout.leftMargin: page.gap
            Layout.rightMargin: page.gap
            Layout.topMargin: Theme.unit / 2
            Layout.bottomMargin: Theme.unit / 2
            name: "events"
            locale: page.locale
            visible: history.pagesCount > 1
            page: history.page
            pagesCount: history.pagesCount
            onTurned: index => history.page = index
        }
    }
    DaysDialog {
        id: days
        objectName: "days"
        region: page.locale
        mirrors: page.service.mirrors
        onChosen: (from, to) => {
            history.from = from
            history.to = to
        }
    }
    LineDialog {
        id: line
        objectName: "line"
        region: page.locale
        mirrors: page.service.mirrors
    }
}

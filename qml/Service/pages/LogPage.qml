import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The log as it is written, filtered by level, module and text. It follows the newest line, or
// stands still while it is paused.
ServicePage {
    id: page

    readonly property var looks: ({
        [LogModel.Debug]: { mark: "bug", tone: Theme.textMuted },
        [LogModel.Info]: { mark: "information-outline", tone: Theme.accent },
        [LogModel.Event]: { mark: "calendar-text", tone: Theme.accent },
        [LogModel.Warning]: { mark: "alert", tone: Theme.warning },
        [LogModel.Error]: { mark: "alert-circle", tone: Theme.bad },
        [LogModel.Critical]: { mark: "close-circle", tone: Theme.bad }
    })

    title: qsTr("Log")
    icon: "file-document"

    LogModel {
        id: log
        filter: search.text
        module: modules.chosen
        paused: pause.checked
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
                Layout.preferredWidth: 21 * Theme.unit
                objectName: "log.level"
                displayText: qsTr("From %1").arg(currentText)
                model: log.levels
                textRole: "name"
                valueRole: "value"
                onActivated: log.level = currentValue
                onModelChanged: currentIndex = indexOfValue(log.level) // It is in another language.
                Component.onCompleted: currentIndex = indexOfValue(log.level)
            }
            Button {
                Layout.maximumWidth: 24 * Theme.unit
                objectName: "log.modules"
                icon.name: "filter-variant"
                text: log.module || qsTr("All modules")
                onClicked: modules.open()
            }
            SearchField {
                id: search
                Layout.fillWidth: true
                objectName: "log.search"
            }
            IconButton {
                id: pause
                objectName: "log.pause"
                checkable: true
                icon.name: checked ? "play" : "pause"
                text: checked ? qsTr("Resume") : qsTr("Pause")
            }
            IconButton {
                objectName: "log.clear"
                icon.name: "delete"
                text: qsTr("Clear the view")
                onClicked: log.clear()
            }
        }
        Banner {
            Layout.fillWidth: true
            objectName: "log.lost"
            visible: log.lostLines > 0
            text: Formats.digits(qsTr("%n line(s) came faster than this view could take them. The log file has them.", "", log.lostLines), page.locale)
        }
        FollowList {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            name: "log"
            model: log

            delegate: TextRow {
                required property var model
                required time
                required property int level
                required property string levelName
                required property string modules
                required text

                width: ListView.view.width
                gap: page.gap
                caption: [Formats.exactTime(time, page.locale), levelName, modules].filter(part => part).join("  ·  ")
                mark: page.looks[level] ? page.looks[level].mark : "file-document"
                markColor: page.looks[level] ? page.looks[level].tone : Theme.textMuted
                onClicked: line.show(caption, model.fullText)
            }

            EmptyState {
                anchors.fill: parent
                objectName: "log.empty"
                visible: list.count === 0
                icon: page.icon
                title: qsTr("No lines")
                text: Library.logManager === null ? qsTr("This program has no folders for log files.")
                      : log.level > LogModel.Debug || log.module || log.filter ? qsTr("No line matches the filters above.")
                      : qsTr("New lines appear here as soon as they are logged.")
            }
        }
    }
    ModulesDialog {
        id: modules
        objectName: "modules"
        mirrors: page.service.mirrors
    }
    LineDialog {
        id: line
        objectName: "line"
        region: page.locale
        mirrors: page.service.mirrors
    }
}

import QtQuick 2.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The crash reports of the application, the newest first.
Item {
    id: root

    readonly property alias folder: reports.folder
    property string shown // the path of the report whose text is shown
    property var locale

    signal picked(string path, string name, real size, string detail)

    CrashReportsModel { id: reports }

    TouchList {
        objectName: "files.reports"
        anchors.fill: parent
        model: reports
        delegate: ListRow {
            required property int index
            required property string fileName
            required property string path
            required property real size
            required property string reason
            required property date time

            objectName: "files.report." + index
            width: ListView.view.width
            highlighted: root.shown === path
            icon.name: "bug"
            iconColor: Theme.bad
            text: reason
            detail: Formats.moment(time, root.locale)
            onClicked: root.picked(path, fileName, size, reason)
        }
    }
    EmptyState {
        anchors.fill: parent
        visible: reports.count === 0
        icon: reports.folder ? "check-circle" : "bug"
        title: reports.folder ? qsTr("No crash") : qsTr("Crash reports are off")
        text: reports.folder ? qsTr("The folder has no crash report.")
                             : qsTr("The application has not called CrashReports::install().")
    }
}

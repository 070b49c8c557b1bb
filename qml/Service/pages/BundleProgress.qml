import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// Shows the state of a support bundle, with the buttons that start and cancel it.
ColumnLayout {
    id: root

    required property BundleTask task
    property var locale
    readonly property var result: ({
        [BundleTask.Done]: { icon: "check-circle", tone: Theme.good, text: qsTr("The bundle is complete.") },
        [BundleTask.Canceled]: { icon: "close-circle", tone: Theme.textMuted, text: qsTr("Cancelled. No file was left.") },
        [BundleTask.Failed]: { icon: "alert-circle", tone: Theme.bad, text: task.error }
    })[task.status]

    spacing: 1.5 * Theme.unit

    Label {
        Layout.fillWidth: true
        Layout.fillHeight: true
        muted: true
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignTop
        text: qsTr("One file for the factory: log files, events, the kernel log, crash reports, switches without their secrets, versions, and the state of disks and memory.")
    }
    RowLayout {
        visible: root.result !== undefined
        spacing: Theme.unit

        Icon {
            name: root.result ? root.result.icon : ""
            color: root.result ? root.result.tone : Theme.text
        }
        Label {
            objectName: "support.result"
            Layout.fillWidth: true
            text: root.result ? root.result.text : ""
            wrapMode: Text.Wrap
            maximumLineCount: 3
        }
    }
    Label {
        objectName: "support.file"
        Layout.fillWidth: true
        visible: root.task.running || root.task.status === BundleTask.Done
        text: root.task.fileName
        font.family: Theme.monoFamily
        font.pixelSize: Theme.fontSmall
        wrapMode: Text.WrapAnywhere
    }
    RowLayout {
        visible: root.task.running
        spacing: 1.5 * Theme.unit

        ProgressBar {
            objectName: "support.progress"
            Layout.fillWidth: true
            value: root.task.progress
        }
        Label {
            text: qsTr("%1 %").arg(Formats.number(100 * root.task.progress, root.locale))
        }
    }
    Button {
        objectName: "support.start"
        Layout.fillWidth: true
        visible: !root.task.running
        enabled: root.task.folder !== ""
        kind: Button.Primary
        icon.name: "download"
        text: qsTr("Create the bundle")
        onClicked: root.task.start()
    }
    Button {
        objectName: "support.cancel"
        Layout.fillWidth: true
        visible: root.task.running
        icon.name: "close"
        text: qsTr("Cancel")
        onClicked: root.task.cancel()
    }
}

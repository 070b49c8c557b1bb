import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The lines of the kernel that the application captures while it runs.
ServicePage {
    id: page

    title: qsTr("Kernel")
    icon: "linux"

    KernelLogModel {
        id: lines
        filter: search.text
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.leftMargin: page.gap
            Layout.rightMargin: page.gap
            Layout.bottomMargin: Theme.unit
            spacing: 1.5 * Theme.unit

            SearchField {
                id: search
                Layout.fillWidth: true
                objectName: "kernel.search"
            }
            Chip {
                objectName: "kernel.state"
                iconName: lines.isRunning ? "play" : "pause"
                text: lines.isRunning ? qsTr("Capturing") : qsTr("Not capturing")
                tone: lines.isRunning ? Theme.good : Theme.textMuted
            }
        }
        Banner {
            Layout.fillWidth: true
            objectName: "kernel.restricted"
            iconName: "lock-outline"
            visible: lines.isRestricted
            text: qsTr("The machine lets only its administrator read the kernel log (kernel.dmesg_restrict is 1).")
        }
        FollowList {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            name: "kernel"
            model: lines

            delegate: TextRow {
                required property var model
                required time
                required text

                width: ListView.view.width
                gap: page.gap
                caption: moment
                region: page.locale
                onClicked: line.show(caption || page.title, model.fullText)
            }

            EmptyState {
                anchors.fill: parent
                objectName: "kernel.empty"
                visible: list.count === 0
                icon: page.icon
                title: lines.isRunning || search.text ? qsTr("No lines") : qsTr("The kernel log is not captured")
                text: search.text ? qsTr("No line contains the text above.")
                      : lines.isRunning ? qsTr("The kernel has not written a line yet.")
                      : qsTr("The application starts the capture with Dmesg::start(). A desktop build never captures.")
            }
        }
    }
    LineDialog {
        id: line
        objectName: "line"
        region: page.locale
        mirrors: page.service.mirrors
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// The places that a support bundle may go to: the folder that the application names, and the sticks
// that are plugged in. `chosen` is the path of one of them.
ColumnLayout {
    id: root

    required property BundleTask task
    property string folder
    property string chosen: folder
    property var locale

    // A running bundle keeps its folder.
    function setFolder() {
        if (!task.running)
            task.folder = chosen
    }

    spacing: 0
    onChosenChanged: setFolder()
    Component.onCompleted: setFolder()

    Connections {
        target: root.task
        function onStatusChanged() {
            root.setFolder()
            volumes.refresh() // The bundle has taken some of the space.
        }
    }
    ListRow {
        objectName: "support.folder"
        Layout.fillWidth: true
        visible: root.folder !== ""
        highlighted: root.task.folder === root.folder
        icon.name: "folder"
        iconColor: highlighted ? Theme.accent : Theme.textMuted
        text: qsTr("Folder of the application")
        detail: root.folder
        onClicked: root.chosen = root.folder
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        TouchList {
            objectName: "support.volumes"
            anchors.fill: parent
            visible: volumes.count > 0
            model: VolumesModel { id: volumes }
            delegate: ListRow {
                required property string name
                required property string path
                required property real available
                required property real total
                required property bool isWritable

                objectName: "support.volume." + name
                width: ListView.view.width
                enabled: isWritable
                highlighted: root.task.folder === path
                icon.name: "usb"
                iconColor: highlighted ? Theme.accent : Theme.textMuted
                text: name
                detail: isWritable && total === 0 ? "…" : isWritable ? qsTr("%1 free of %2").arg(Formats.bytes(available, root.locale)).arg(Formats.bytes(total, root.locale))
                                   : qsTr("Write-protected")
                onClicked: root.chosen = path
            }
        }
        Repeater { // Unlike the list, it has an item for each stick, seen or not.
            model: volumes

            Item {
                required property string path
                required property bool isWritable

                // A stick is there to be written to, unless the application has its own folder.
                Component.onCompleted: if (!root.chosen && isWritable) root.chosen = path
                Component.onDestruction: if (root.chosen === path) root.chosen = root.folder
            }
        }
        EmptyState {
            anchors.fill: parent
            visible: volumes.count === 0
            icon: "usb"
            title: qsTr("No stick")
            text: Formats.unbroken(qsTr("Plug in a USB stick. It appears here when the system has mounted it below /media, /run/media or /mnt."))
        }
    }
}

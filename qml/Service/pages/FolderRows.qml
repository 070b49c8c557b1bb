import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The folders and files in a folder. A tap enters a folder or picks a file.
ColumnLayout {
    id: root

    property string folder
    property var trail: [] // the names of the folders below it that were entered
    property string shown // the path of the file whose text is shown
    property var locale

    signal picked(string path, string name, real size, string detail)

    spacing: 0
    onFolderChanged: trail = []

    FolderListModel {
        id: entries
        folder: root.folder ? root.folder + root.trail.map(name => "/" + name).join("") : ""
    }
    ListRow {
        objectName: "files.up"
        Layout.fillWidth: true
        visible: root.trail.length > 0
        icon.name: "arrow-up"
        iconColor: Theme.accent
        text: root.trail.join(" / ")
        onClicked: root.trail = root.trail.slice(0, -1)
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        TouchList {
            objectName: "files.list"
            anchors.fill: parent
            visible: entries.count > 0
            model: entries
            delegate: FileRow {
                width: ListView.view.width
                highlighted: root.shown === path
                screenLocale: root.locale
                onClicked: {
                    if (isFolder)
                        root.trail = root.trail.concat(name)
                    else
                        root.picked(path, name, size, detail)
                }
            }
        }
        EmptyState {
            objectName: "files.gone"
            anchors.fill: parent
            visible: entries.count === 0 && entries.status !== FolderListModel.Listing
            icon: "folder-outline"
            title: entries.status === FolderListModel.Ready ? qsTr("The folder is empty")
                 : root.folder ? qsTr("The folder cannot be read") : qsTr("There is no folder to show")
            text: entries.status === FolderListModel.Ready ? ""
                : root.folder ? qsTr("It was deleted or unplugged, or the application may not read it. Its files appear when it is back.")
                              : qsTr("The application names the folders of this page by the property folders of Service.")
        }
    }
}

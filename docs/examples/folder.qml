import QtQuick 2.15
import ZelTools 1.0

ListView {
    id: view

    property alias folder: files.folder // such as "/media/usb"

    model: FolderListModel {
        id: files

        nameFilters: ["*.jpg", "*.png"]
        sortField: FolderListModel.SortByTime
        sortReversed: true // the newest first
    }
    delegate: Text {
        required property string name
        required property bool isFolder
        required property var size

        text: name + (isFolder ? "/" : ", " + size + " bytes")
    }
}

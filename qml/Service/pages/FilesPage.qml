import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The folders that the host shows, the crash reports, and the text of their files. A wide display has
// the list and the text side by side; on a small one the text covers the list.
ServicePage {
    id: filesPage

    readonly property var roots: (service.folders.length > 0 ? service.folders : files.ownFolders)
                                 .filter(path => !isSameFolder(path, crashes.folder))
    readonly property bool showsCrashes: tabs.currentIndex === roots.length

    function isSameFolder(one, other) {
        return one.replace(/\/+$/, "") === other.replace(/\/+$/, "")
    }

    function showPart(name) {
        tabs.currentIndex = name === "crashes" ? roots.length : 0
    }

    title: qsTr("Files")
    icon: "folder"

    FilesAccess {
        id: files
        roots: filesPage.roots.concat(crashes.folder ? [crashes.folder] : [])
    }
    Item {
        id: area
        anchors.fill: parent
        anchors.leftMargin: filesPage.gap
        anchors.rightMargin: filesPage.gap
        anchors.bottomMargin: filesPage.gap

        ColumnLayout {
            anchors.left: parent.left
            width: filesPage.isWide ? 0.42 * area.width - filesPage.gap : area.width
            height: area.height
            visible: filesPage.isWide || content.path === ""
            spacing: Theme.unit

            Tabs {
                id: tabs
                objectName: "files.roots"
                Layout.fillWidth: true
                model: filesPage.roots.map(path => path.split("/").filter(part => part).pop() || path)
                                      .concat(qsTr("Crash reports"))
                onPicked: content.close()
            }
            FolderRows {
                Layout.fillWidth: true
                Layout.fillHeight: true
                visible: !filesPage.showsCrashes
                folder: filesPage.roots[tabs.currentIndex] || ""
                shown: content.path
                locale: filesPage.locale
                onPicked: (path, name, size, detail) => content.open(path, name, size, detail)
            }
            CrashRows {
                id: crashes
                Layout.fillWidth: true
                Layout.fillHeight: true
                visible: filesPage.showsCrashes
                shown: content.path
                locale: filesPage.locale
                onPicked: (path, name, size, detail) => content.open(path, name, size, detail)
            }
        }
        FileText {
            id: content
            anchors.right: parent.right
            width: filesPage.isWide ? 0.58 * area.width : area.width
            height: area.height
            visible: filesPage.isWide || path !== ""
            page: filesPage
            access: files
        }
    }
}

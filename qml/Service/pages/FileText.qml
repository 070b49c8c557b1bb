import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The text of a file, in parts of which each is read when it is shown, and the way to delete the
// file. A long line goes on in the next rows.
Card {
    id: root

    required property ServicePage page
    required property FilesAccess access
    property string path
    property string name
    property string detail
    property int part: 0
    property int partsCount: 1
    property var lines: []
    readonly property int partSize_B: 262144
    readonly property bool isBinary: lines.length > 0 && lines[0].indexOf("\u2400") >= 0

    function open(path, name, size, detail) {
        root.path = path
        root.name = Theme.oneLine(name)
        root.detail = detail
        partsCount = Math.max(1, Math.ceil(size / partSize_B))
        show(0)
    }

    function close() {
        path = ""
        lines = []
    }

    function show(number) {
        part = number
        lines = rowsOf(access.readText(path, partSize_B, part * partSize_B))
        // The file may have grown.
        if (part === partsCount - 1 && access.error === "")
            countParts()
        list.positionViewAtBeginning()
    }

    function countParts() {
        while (access.readText(path, 1, partsCount * partSize_B) !== "")
            ++partsCount
    }

    function rowsOf(text) {
        const rows = []
        for (const line of text.split("\n")) {
            for (let start = 0; start === 0 || start < line.length; start += 500)
                rows.push(line.substr(start, 500))
        }
        return rows
    }

    function remove() {
        const reason = access.remove(path)
        page.service.report(reason, qsTr("%1 is deleted.").arg(name))
        if (!reason)
            close()
    }

    // Without the right to delete, remove() only says so.
    function askToRemove() {
        if (Library.access.allows(Access.Technician))
            page.service.confirm(qsTr("Delete this file?"), name, qsTr("Delete"), remove)
        else
            remove()
    }

    padding: Theme.unit

    RowLayout {
        Layout.fillHeight: false
        visible: root.path !== ""
        spacing: Theme.unit

        IconButton {
            objectName: "files.back"
            visible: !root.page.isWide
            icon.name: "arrow-left"
            text: qsTr("Back")
            onClicked: root.close()
        }
        ColumnLayout {
            Layout.leftMargin: Theme.unit
            spacing: 0

            Label {
                Layout.fillWidth: true
                text: root.name
                elide: Text.ElideMiddle
            }
            Label {
                Layout.fillWidth: true
                muted: true
                text: root.detail
                font.pixelSize: Theme.fontSmall
            }
        }
        FileParts {
            visible: root.partsCount > 1
            part: root.part
            partsCount: root.partsCount
            locale: root.page.locale
            onPicked: part => root.show(part)
        }
        IconButton {
            objectName: "files.delete"
            kind: Button.Danger
            icon.name: "delete"
            text: qsTr("Delete")
            onClicked: root.askToRemove()
        }
    }
    Item {
        Layout.fillWidth: true
        Layout.fillHeight: true

        TouchList {
            id: list
            objectName: "files.text"
            anchors.fill: parent
            LayoutMirroring.enabled: false // Files run from left to right in every language.
            LayoutMirroring.childrenInherit: true
            visible: root.path !== "" && root.access.error === "" && !root.isBinary
            model: root.lines
            delegate: Label {
                required property string modelData

                width: ListView.view.width
                height: Math.max(implicitHeight, Theme.fontSmall) // Rows without height would all be made.
                leftPadding: Theme.unit
                rightPadding: 2 * Theme.unit
                text: modelData
                font.family: Theme.monoFamily
                font.pixelSize: Theme.fontSmall
                wrapMode: Text.WrapAnywhere
            }
        }
        EmptyState {
            anchors.fill: parent
            visible: !list.visible
            icon: root.path === "" ? "file-document" : root.isBinary ? "file" : "alert-circle"
            title: root.path === "" ? qsTr("Choose a file")
                 : root.isBinary ? qsTr("This file is not text") : qsTr("The file cannot be read")
            text: root.path === "" || root.isBinary ? "" : root.access.error
        }
    }
}

import QtQuick 2.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// A file or a folder in a list.
ListRow {
    id: row

    required property string name
    required property string path
    required property real size
    required property date modified
    required property bool isFolder
    property var screenLocale

    objectName: "files.row." + name
    icon.name: isFolder ? "folder" : "file-document"
    iconColor: isFolder ? Theme.accent : Theme.textMuted
    text: name
    detail: isFolder ? Formats.moment(modified, screenLocale)
                     : Formats.bytes(size, screenLocale) + " · " + Formats.moment(modified, screenLocale)

    Icon {
        visible: row.isFolder
        name: "chevron-right"
        color: Theme.textMuted
    }
}

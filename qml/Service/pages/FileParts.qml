import QtQuick 2.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// The buttons that turn the parts of a long file.
Row {
    id: root

    property int part: 0
    property int partsCount: 1
    property var locale

    signal picked(int part)

    IconButton {
        objectName: "files.before"
        enabled: root.part > 0
        icon.name: "chevron-left"
        text: qsTr("Earlier")
        onClicked: root.picked(root.part - 1)
    }
    Label {
        height: Theme.touch
        leftPadding: Theme.unit
        rightPadding: Theme.unit
        text: qsTr("%1 of %2").arg(Formats.number(root.part + 1, root.locale)).arg(Formats.number(root.partsCount, root.locale))
        font.pixelSize: Theme.fontSmall
    }
    IconButton {
        objectName: "files.after"
        enabled: root.part < root.partsCount - 1
        icon.name: "chevron-right"
        text: qsTr("Later")
        onClicked: root.picked(root.part + 1)
    }
    IconButton {
        objectName: "files.last"
        enabled: root.part < root.partsCount - 1
        icon.name: "page-last"
        text: qsTr("End of the file")
        onClicked: root.picked(root.partsCount - 1)
    }
}

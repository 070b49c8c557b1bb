import QtQuick 2.15
import ZelTools.Style 1.0

// An icon and a text side by side, centred in the item.
Item {
    id: root

    property alias iconName: icon.name
    property alias iconSize: icon.size
    property alias text: label.text
    property alias font: label.font
    property color ink: Theme.text

    readonly property real iconRoom: icon.visible ? icon.width + (label.visible ? row.spacing : 0) : 0

    implicitWidth: iconRoom + (label.visible ? Math.ceil(label.implicitWidth) : 0)
    implicitHeight: Math.max(icon.height, label.implicitHeight)

    Row {
        id: row
        anchors.centerIn: parent
        spacing: Theme.unit

        Icon {
            id: icon
            visible: name !== ""
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
        }
        Label {
            id: label
            visible: text !== ""
            width: Math.min(Math.ceil(implicitWidth), root.width - root.iconRoom)
            anchors.verticalCenter: parent.verticalCenter
            color: root.ink
        }
    }
}

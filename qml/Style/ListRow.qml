import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "parts"

// A row of a list: an icon, a text with a second line below it, and at the end the items inside it.
T.ItemDelegate {
    id: control

    property string detail
    property color iconColor: Theme.textMuted
    property bool isFramed: true // a line below it
    default property alias trailing: end.data

    implicitHeight: Math.max(detail ? 64 : 52, implicitContentHeight)
    leftPadding: 2 * Theme.unit
    rightPadding: 2 * Theme.unit
    opacity: enabled ? 1 : 0.45
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody
    icon.width: 24

    contentItem: RowLayout {
        spacing: 2 * Theme.unit

        Icon {
            visible: name !== ""
            name: control.icon.name
            size: control.icon.width
            color: control.iconColor
        }
        ColumnLayout {
            spacing: 2

            Label {
                Layout.fillWidth: true
                text: Theme.oneLine(control.text)
                font: control.font
            }
            Label {
                Layout.fillWidth: true
                visible: text !== ""
                text: control.detail
                muted: true
                font.pixelSize: Theme.fontSmall
            }
        }
        RowLayout {
            id: end
            spacing: Theme.unit
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            color: Theme.tint(Theme.accent)
            visible: control.highlighted
        }
        Rectangle {
            anchors.fill: parent
            color: Theme.pressed
            visible: control.down
        }
        Rectangle {
            y: parent.height - 1
            width: parent.width
            height: 1
            color: Theme.line
            opacity: 0.6
            visible: control.isFramed
        }
        FocusRing {
            anchors.margins: 2
            radius: Theme.radius
            visible: control.visualFocus
        }
    }
}

import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "formats.js" as Formats

// A line of a log or a history, cut to the width, with what is known about it below. A list makes
// hundreds of these in a second while it scrolls, so that the row consists of few items.
T.AbstractButton {
    id: row

    property string mark // The name of an icon.
    property color markColor: Theme.textMuted
    property string caption
    property int gap: 2 * Theme.unit // The margin at the sides.
    property date time // An invalid one is not shown.
    property var region: Qt.locale() // Has the forms of dates.
    readonly property string moment: isNaN(time) ? "" : Formats.day(time, region) + "  " + Formats.timeOfDay(time, region)

    implicitHeight: Theme.touch + Theme.unit
    leftPadding: gap + (mark && !mirrored ? 5 * Theme.unit : 0)
    rightPadding: gap + (mark && mirrored ? 5 * Theme.unit : 0)

    contentItem: Item {
        Label {
            y: Theme.unit / 2
            width: parent.width
            height: parent.height / 2
            maximumLineCount: 1
            text: row.text
        }
        Label {
            y: parent.height / 2
            width: parent.width
            height: parent.height / 2 - Theme.unit / 2
            font.pixelSize: Theme.fontSmall
            muted: true
            text: row.caption
        }
    }
    background: Rectangle {
        color: row.down ? Theme.surfaceRaised : "transparent"
        border.color: Theme.accent
        border.width: row.visualFocus ? 2 : 0

        Icon {
            x: row.mirrored ? parent.width - width - row.gap : row.gap
            anchors.verticalCenter: parent.verticalCenter
            visible: row.mark
            color: row.markColor
            name: row.mark
        }
        Rectangle {
            y: parent.height - 1
            width: parent.width
            height: 1
            color: Theme.line
            opacity: 0.6
        }
    }
}

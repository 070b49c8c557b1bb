import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// A day in a month.
T.AbstractButton {
    id: control

    required property date day
    property bool isMarked: false
    property bool isOutside: false // Whether the day belongs to the month before or after.
    readonly property string iso: Qt.formatDate(day, "yyyy-MM-dd")

    implicitHeight: 5.5 * Theme.unit
    objectName: "day." + iso

    contentItem: Label {
        horizontalAlignment: Text.AlignHCenter
        color: control.isMarked ? Theme.accentText : control.isOutside ? Theme.textMuted : Theme.text
        text: control.text
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.isMarked ? Theme.accent : control.down ? Theme.pressed : "transparent"
        border.color: control.isMarked ? Theme.text : Theme.accent
        border.width: control.visualFocus ? 2 : 0
    }
}

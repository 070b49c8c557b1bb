import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "parts"

// A check box with a text.
T.CheckBox {
    id: control

    implicitWidth: Math.max(Theme.touch, implicitContentWidth)
    implicitHeight: Theme.touch
    opacity: enabled ? 1 : 0.45
    spacing: Theme.unit
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody

    indicator: Rectangle {
        x: control.mirrored ? control.width - width : 0
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: width
        radius: 6
        color: control.checked ? Theme.accent : "transparent"
        border.color: control.checked ? Theme.accent : Theme.textMuted
        border.width: 2

        Icon {
            anchors.centerIn: parent
            name: "check"
            size: 22
            color: Theme.accentText
            visible: control.checked
        }
        FocusRing {
            radius: parent.radius + 3
            visible: control.visualFocus
        }
    }
    contentItem: Label {
        leftPadding: control.mirrored ? 0 : control.indicator.width + control.spacing
        rightPadding: control.mirrored ? control.indicator.width + control.spacing : 0
        text: control.text
        font: control.font
    }
}

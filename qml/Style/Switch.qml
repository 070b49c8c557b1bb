import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "parts"

// A switch, which takes effect immediately.
T.Switch {
    id: control

    implicitWidth: Math.max(Theme.touch, indicator.width + (text ? Theme.unit + implicitContentWidth : 0))
    implicitHeight: Theme.touch
    opacity: enabled ? 1 : 0.45
    spacing: Theme.unit
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody

    indicator: Rectangle {
        x: control.mirrored ? control.width - width : 0
        anchors.verticalCenter: parent.verticalCenter
        width: 52
        height: 30
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.surfaceRaised
        border.color: control.checked ? Theme.accent : Theme.textMuted

        Rectangle {
            x: 4 + control.visualPosition * (parent.width - width - 8)
            anchors.verticalCenter: parent.verticalCenter
            width: 22
            height: width
            radius: width / 2
            color: control.checked ? Theme.accentText : Theme.textMuted
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

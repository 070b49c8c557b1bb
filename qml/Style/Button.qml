import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "parts"

// A button with a text, an icon (`icon.name`) or both.
T.Button {
    id: control

    enum Kind { Normal, Primary, Danger }
    property int kind: Button.Normal
    property color fill: kind === Button.Primary ? Theme.accent
                                : kind === Button.Danger ? Theme.tint(Theme.bad) : Theme.surfaceRaised
    property color ink: kind === Button.Primary ? Theme.accentText
                               : kind === Button.Danger ? Theme.bad : Theme.text

    implicitWidth: Math.max(Theme.touch, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Theme.touch
    leftPadding: text ? 2 * Theme.unit : Theme.unit
    rightPadding: leftPadding
    opacity: enabled ? 1 : 0.45
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody
    icon.width: 22

    contentItem: IconLabel {
        iconName: control.icon.name
        iconSize: control.icon.width
        text: control.text
        font: control.font
        ink: control.ink
    }
    background: Rectangle {
        radius: Theme.radius
        color: control.fill

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.pressed
            visible: control.down || control.checked
        }
        FocusRing { visible: control.visualFocus }
    }
}

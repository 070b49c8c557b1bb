import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "parts"

// A number between two limits, with a button at each side; arrow keys change it as well.
T.SpinBox {
    id: control

    implicitWidth: 2 * Theme.touch + 7 * Theme.unit
    implicitHeight: Theme.touch
    leftPadding: Theme.touch
    rightPadding: Theme.touch
    opacity: enabled ? 1 : 0.45
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody

    contentItem: TextInput {
        text: control.displayText
        color: Theme.text
        font: control.font
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        horizontalAlignment: TextInput.AlignHCenter
        verticalAlignment: TextInput.AlignVCenter
        readOnly: !control.editable
        validator: control.validator
        inputMethodHints: control.inputMethodHints
    }
    down.indicator: SpinStep {
        x: control.mirrored ? control.width - width : 0
        name: "minus"
        isDown: control.down.pressed
        isUsable: control.value > control.from || control.wrap
    }
    up.indicator: SpinStep {
        x: control.mirrored ? 0 : control.width - width
        name: "plus"
        isDown: control.up.pressed
        isUsable: control.value < control.to || control.wrap
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.surfaceRaised
        border.color: Theme.line

        FocusRing { visible: control.visualFocus || control.contentItem.activeFocus }
    }
}

import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// A line of text to edit. `isRefused` marks a text that cannot be taken.
T.TextField {
    id: control

    property bool isRefused: false

    implicitWidth: 25 * Theme.unit
    implicitHeight: Theme.touch
    leftPadding: 1.5 * Theme.unit
    rightPadding: leftPadding
    color: Theme.text
    placeholderTextColor: Theme.textMuted
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    selectByMouse: true
    opacity: enabled ? 1 : 0.45
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody
    horizontalAlignment: TextInput.AlignLeft
    verticalAlignment: TextInput.AlignVCenter

    background: Rectangle {
        radius: Theme.radius
        color: Theme.surfaceRaised
        border.width: control.isRefused || control.activeFocus ? 2 : 1
        border.color: control.isRefused ? Theme.bad : control.activeFocus ? Theme.accent : Theme.line
    }

    Label {
        anchors.fill: parent
        anchors.leftMargin: control.leftPadding
        anchors.rightMargin: control.rightPadding
        text: control.placeholderText
        color: control.placeholderTextColor
        font: control.font
        visible: control.length === 0 && control.preeditText === ""
    }
}

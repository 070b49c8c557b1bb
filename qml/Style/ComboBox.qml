import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0
import "parts"

// A combo box, whose list opens over the page.
T.ComboBox {
    id: control

    implicitWidth: 22 * Theme.unit
    implicitHeight: Theme.touch
    leftPadding: mirrored ? 5 * Theme.unit : 1.5 * Theme.unit
    rightPadding: mirrored ? 1.5 * Theme.unit : 5 * Theme.unit
    opacity: enabled ? 1 : 0.45
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody
    Accessible.name: displayText

    delegate: ChoiceRow {
        required property int index

        width: ListView.view.width
        text: control.textAt(index)
        isChosen: control.currentIndex === index
        highlighted: control.highlightedIndex === index
    }
    contentItem: Label {
        text: control.displayText
        font: control.font
    }
    indicator: Icon {
        x: control.mirrored ? Theme.unit : control.width - width - Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron-down"
        color: Theme.textMuted
    }
    background: Rectangle {
        radius: Theme.radius
        color: Theme.surfaceRaised
        border.color: control.popup.visible ? Theme.accent : Theme.line

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.pressed
            visible: control.pressed
        }
        FocusRing { visible: control.visualFocus }
    }
    popup: ChoicePopup {
        y: control.height + Theme.unit / 2
        width: Math.max(control.width, 22 * Theme.unit)
        mirrors: control.mirrored
        model: control.delegateModel
        currentIndex: control.highlightedIndex
    }
}

import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// One of the texts of a row of tabs.
T.AbstractButton {
    id: control

    implicitWidth: Math.max(Theme.touch, implicitContentWidth + 4 * Theme.unit)
    implicitHeight: Theme.touch

    contentItem: Label {
        text: control.text
        color: control.checked ? Theme.accentText : Theme.text
        horizontalAlignment: Text.AlignHCenter
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.topMargin: 4
            anchors.bottomMargin: 4
            radius: height / 2
            color: control.checked ? Theme.accent : control.down ? Theme.line : Theme.surfaceRaised
        }
        FocusRing {
            anchors.margins: 1
            radius: height / 2
            visible: control.visualFocus
        }
    }
}

import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// One of the choices of a combo box.
T.ItemDelegate {
    id: control

    property bool isChosen: false

    implicitHeight: Theme.touch
    leftPadding: 1.5 * Theme.unit
    rightPadding: leftPadding

    contentItem: Label {
        text: control.text
        color: control.isChosen ? Theme.accent : Theme.text
        font.weight: control.isChosen ? Font.DemiBold : Font.Normal
    }
    background: Rectangle {
        color: Theme.pressed
        visible: control.down || control.highlighted || control.visualFocus
    }
}

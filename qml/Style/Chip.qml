import QtQuick 2.15
import ZelTools.Style 1.0

// A short label that names a state, in the colour of the state.
Rectangle {
    id: chip

    property string text
    property alias iconName: icon.name
    property color tone: Theme.textMuted

    implicitWidth: row.implicitWidth + 2 * Theme.unit
    implicitHeight: 28
    radius: height / 2
    color: Theme.tint(tone)

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 0.75 * Theme.unit

        Icon {
            id: icon
            anchors.verticalCenter: parent.verticalCenter
            visible: name !== ""
            size: 16
            color: chip.tone
        }
        Label {
            id: label
            objectName: "chip.text"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, 28 * Theme.unit)
            text: Theme.oneLine(chip.text)
            color: chip.tone
            font.pixelSize: Theme.fontSmall
            font.weight: Font.DemiBold
        }
    }
}

import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// The button of a page in the rail.
T.AbstractButton {
    id: control

    property bool isWide: false
    readonly property color ink: checked ? Theme.accent : Theme.textMuted

    contentItem: Item {
        Icon {
            id: symbol
            x: !control.isWide ? (parent.width - width) / 2
               : control.mirrored ? parent.width - width - 2.5 * Theme.unit : 2.5 * Theme.unit
            y: control.isWide ? (parent.height - height) / 2 : (parent.height - height - label.height) / 2
            name: control.icon.name
            size: control.isWide ? 24 : 22
            color: control.ink
        }
        Label {
            id: label
            x: control.isWide && !control.mirrored ? 7 * Theme.unit : control.isWide ? Theme.unit : 2
            y: control.isWide ? (parent.height - height) / 2 : symbol.y + symbol.height + 1
            width: control.isWide ? parent.width - 8 * Theme.unit : parent.width - 4
            height: control.isWide ? 3 * Theme.unit : 17 // Its implicit one follows it in Qt 6.
            text: control.text
            color: control.checked ? Theme.text : Theme.textMuted
            horizontalAlignment: control.isWide ? Text.AlignLeft : Text.AlignHCenter
            font.pixelSize: control.isWide ? Theme.fontBody : Theme.fontSmall
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.fontSmall
            font.weight: control.checked && control.isWide ? Font.DemiBold : Font.Normal
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: control.isWide ? Theme.unit : 3
            anchors.rightMargin: anchors.leftMargin
            anchors.topMargin: control.isWide ? 3 : 1
            anchors.bottomMargin: anchors.topMargin
            radius: Theme.radius
            color: control.checked ? Theme.tint(Theme.accent) : control.down ? Theme.pressed : "transparent"
            border.color: Theme.accent
            border.width: control.visualFocus ? 2 : 0
        }
    }
}

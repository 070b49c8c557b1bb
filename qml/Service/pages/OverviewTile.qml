import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// A group of facts on the overview. A tap leads to the page that says more.
T.AbstractButton {
    id: tile

    property string caption
    property string detail
    property bool isBad: false
    property bool isWide: false // Whether there is room for larger texts.
    readonly property int smallSize: isWide ? Theme.fontBody : Theme.fontSmall
    default property alias content: more.data

    Layout.fillWidth: true
    Layout.fillHeight: true
    Layout.preferredWidth: 1 // All tiles are equally wide and high.
    Layout.preferredHeight: 1
    Layout.minimumHeight: 15 * Theme.unit
    Accessible.name: caption + (text ? ", " + text : "") + (detail ? ", " + detail : "")
    padding: (isWide ? 2.5 : 1.5) * Theme.unit

    contentItem: ColumnLayout {
        spacing: tile.isWide ? 1.5 * Theme.unit : Theme.unit / 2

        RowLayout {
            spacing: Theme.unit

            Icon {
                name: tile.isBad ? "alert-circle" : tile.icon.name
                color: tile.isBad ? Theme.bad : Theme.accent
                size: 22
            }
            Label {
                Layout.fillWidth: true
                font.pixelSize: tile.smallSize
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.fontSmall - 2 // rather small than cut, in a language of long words
                muted: true
                text: tile.caption
            }
        }
        Heading {
            Layout.fillWidth: true
            color: tile.isBad ? Theme.bad : Theme.text
            font.pixelSize: tile.isWide ? Theme.fontDisplay : Theme.fontTitle
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.fontBody
            text: tile.text
            visible: text !== ""
        }
        Label {
            Layout.fillWidth: true
            font.pixelSize: tile.smallSize
            maximumLineCount: 2
            muted: true
            text: tile.detail
            visible: text !== ""
            wrapMode: Text.Wrap
        }
        ColumnLayout {
            id: more
            spacing: Theme.unit / 2
            visible: children.length > 0
        }
        Item { Layout.fillHeight: true }
    }
    background: Rectangle {
        border.color: tile.isBad ? Theme.bad : tile.visualFocus ? Theme.accent : Theme.line
        color: tile.down ? Theme.surfaceRaised : Theme.surface
        radius: 1.2 * Theme.radius
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// The free part of a storage as a text, above a bar that shows the used part.
ColumnLayout {
    id: usage

    property string name
    property real total
    property real available
    property var locale: Qt.locale()
    property bool isWide: false
    readonly property bool isShort: available < total / 20

    spacing: 2

    Label {
        Layout.fillWidth: true
        color: usage.isShort ? Theme.bad : Theme.text
        font.pixelSize: usage.isWide ? Theme.fontBody : Theme.fontSmall
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.fontSmall - 2 // rather small than cut, in a language of long words
        text: qsTr("%1: %2 free").arg(usage.name).arg(Formats.bytes(usage.available, usage.locale))
    }
    ProgressBar {
        Layout.fillWidth: true
        value: usage.total > 0 ? (usage.total - usage.available) / usage.total : 0
    }
}

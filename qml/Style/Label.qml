import QtQuick 2.15
import ZelTools.Style 1.0

// A text. It is shown as it is, whatever markup it holds; one that is not wrapped is a single line.
Text {
    property bool muted: false

    color: muted ? Theme.textMuted : Theme.text
    font.family: Theme.fontFamily
    font.pixelSize: Theme.fontBody
    textFormat: Text.PlainText
    elide: Text.ElideRight
    maximumLineCount: wrapMode === Text.NoWrap ? 1 : 2147483647 // the latter is the default of Text
    horizontalAlignment: Text.AlignLeft
    verticalAlignment: Text.AlignVCenter
}

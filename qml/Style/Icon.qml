import QtQuick 2.15
import ZelTools.Style 1.0
import "parts/glyphs.js" as Glyphs

// An icon by its name, for example "alert". A name that is not in the table leaves the place
// empty and is a warning.
Text {
    property string name
    property int size: 24

    width: size
    height: size
    text: Glyphs.glyph(name, LayoutMirroring.enabled)
    color: Theme.text
    font.family: Theme.iconFamily
    font.pixelSize: size
    textFormat: Text.PlainText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}

import QtQuick 2.15
import ZelTools.Style 1.0

// The title of a page, a card or a dialog.
Label {
    font.pixelSize: Theme.fontTitle
    font.weight: Font.DemiBold
}

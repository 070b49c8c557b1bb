import QtQuick 2.15
import ZelTools.Service 1.0
import ZelTools.Style 1.0

// The common base of the pages. A page fills the room between the rail, the
// header and the lower edge, and keeps `gap` free at its sides.
FocusScope {
    required property Service service
    property string title
    property string icon
    // Dates and numbers are those of the language of the screen.
    readonly property var locale: service.locale
    // A display of 1280 pixels has room for two columns, one of 800 has not.
    readonly property bool isWide: width >= 900
    readonly property int gap: isWide ? 3 * Theme.unit : 2 * Theme.unit

    // Opens a part of the page that another page leads to.
    function showPart(name) {
    }
}

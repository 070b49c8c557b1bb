import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// Turns pages, of which the first has the number 0.
RowLayout {
    id: turner

    property string name // The prefix of the objectNames.
    property int page
    property int pagesCount
    property var locale: Qt.locale()

    signal turned(int page)

    spacing: Theme.unit

    IconButton {
        objectName: turner.name + ".first"
        enabled: turner.page > 0
        icon.name: "page-first"
        text: qsTr("First page")
        onClicked: turner.turned(0)
    }
    IconButton {
        objectName: turner.name + ".back"
        enabled: turner.page > 0
        icon.name: "chevron-left"
        text: qsTr("Previous page")
        onClicked: turner.turned(turner.page - 1)
    }
    Label {
        Layout.fillWidth: true
        objectName: turner.name + ".pageText"
        horizontalAlignment: Text.AlignHCenter
        muted: true
        text: qsTr("Page %1 of %2").arg(Formats.number(turner.page + 1, turner.locale))
              .arg(Formats.number(turner.pagesCount, turner.locale))
    }
    IconButton {
        objectName: turner.name + ".forward"
        enabled: turner.page + 1 < turner.pagesCount
        icon.name: "chevron-right"
        text: qsTr("Next page")
        onClicked: turner.turned(turner.page + 1)
    }
    IconButton {
        objectName: turner.name + ".last"
        enabled: turner.page + 1 < turner.pagesCount
        icon.name: "page-last"
        text: qsTr("Last page")
        onClicked: turner.turned(turner.pagesCount - 1)
    }
}

import QtQuick 2.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The header of the screen: the title of the page, the access level, the time and the close button.
PageHeader {
    id: header

    property alias dateTimeManager: clock.dateTimeManager
    property var locale
    readonly property int level: Library.access.level
    readonly property var levels: [qsTr("Read only"), qsTr("Operator"), qsTr("Technician")]

    signal closed()

    Clock {
        id: clock
    }
    Chip {
        objectName: "header.access"
        iconName: header.level === Access.ReadOnly ? "lock-outline" : "lock-open-outline"
        tone: header.level === Access.ReadOnly ? Theme.textMuted : Theme.accent
        text: Library.access.user ? Library.access.user + " · " + header.levels[header.level]
                                  : header.levels[header.level]
    }
    Heading {
        objectName: "header.clock"
        text: clock.dateTime.toLocaleTimeString(header.locale, Locale.ShortFormat)
    }
    IconButton {
        objectName: "header.close"
        icon.name: "close"
        fill: "transparent"
        text: qsTr("Close")
        onClicked: header.closed()
    }
}

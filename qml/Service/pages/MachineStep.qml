import QtQuick 2.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// A change of state: to which one, when and by what.
Column {
    id: root

    required property var modelData
    property var locale

    spacing: 2

    Label {
        width: parent.width
        text: root.modelData.to
    }
    Label {
        width: parent.width
        text: [Formats.timeOfDay(root.modelData.time, root.locale), root.modelData.trigger].filter(part => part).join(" · ")
        muted: true
        font.pixelSize: Theme.fontSmall
    }
}

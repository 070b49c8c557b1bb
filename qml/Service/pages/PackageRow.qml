import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// A package of the machine's image: what it is for, and how one gets it if it is missing. `facts` has
// the texts `name`, `use` and `get`.
RowLayout {
    id: root

    required property string name
    required property bool isAvailable
    property var facts

    spacing: 1.5 * Theme.unit

    Icon {
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: Theme.unit
        name: root.isAvailable ? "check-circle" : "close-circle"
        color: root.isAvailable ? Theme.good : Theme.textMuted
    }
    ColumnLayout {
        Layout.topMargin: Theme.unit
        Layout.bottomMargin: Theme.unit
        spacing: 2

        Label {
            Layout.fillWidth: true
            text: root.facts.name
        }
        Label {
            Layout.fillWidth: true
            text: root.facts.use
            muted: true
            font.pixelSize: Theme.fontSmall
            wrapMode: Text.Wrap
        }
        Label {
            Layout.fillWidth: true
            visible: !root.isAvailable
            text: Formats.unbroken(root.facts.get)
            color: Theme.warning
            font.pixelSize: Theme.fontSmall
            wrapMode: Text.Wrap
        }
    }
}

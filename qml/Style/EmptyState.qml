import QtQuick 2.15
import ZelTools.Style 1.0

// The placeholder of a page without content: it says what is missing and how to get it.
Item {
    id: root

    property alias icon: icon.name
    property alias title: heading.text
    property alias text: label.text

    implicitWidth: 40 * Theme.unit
    implicitHeight: column.implicitHeight

    // A column, since a layout would change its height while it asks the wrapped texts for theirs.
    Column {
        id: column
        anchors.centerIn: parent
        width: Math.min(parent.width - 4 * Theme.unit, 56 * Theme.unit)
        spacing: 1.5 * Theme.unit

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 88
            height: width
            radius: width / 2
            color: Theme.surface

            Icon {
                id: icon
                anchors.centerIn: parent
                size: 40
                color: Theme.textMuted
            }
        }
        Heading {
            id: heading
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
        Label {
            id: label
            width: parent.width
            visible: text !== ""
            muted: true
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            lineHeight: 1.2
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0

// The head of a page: its icon and title, and at the end the items inside it.
Item {
    property alias title: heading.text
    property alias iconName: icon.name
    default property alias trailing: end.data

    implicitHeight: 7 * Theme.unit

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 2 * Theme.unit
        anchors.rightMargin: 2 * Theme.unit
        spacing: 1.5 * Theme.unit

        Icon {
            id: icon
            visible: name !== ""
            size: 26
            color: Theme.accent
        }
        Heading {
            id: heading
            Layout.fillWidth: true
        }
        RowLayout {
            id: end
            spacing: 1.5 * Theme.unit
        }
    }
}

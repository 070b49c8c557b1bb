import QtQuick 2.15
import ZelTools.Style 1.0

// A strip above a list that says what one has to know about all its rows.
Rectangle {
    id: banner

    property alias text: label.text
    property alias iconName: icon.name
    property color tone: Theme.warning

    implicitHeight: Math.max(5 * Theme.unit, label.implicitHeight + 2 * Theme.unit)
    color: Theme.tint(tone)

    Icon {
        id: icon
        anchors { left: parent.left; leftMargin: 2 * Theme.unit; verticalCenter: parent.verticalCenter }
        color: banner.tone
        name: "alert"
    }
    Label {
        id: label
        anchors {
            left: icon.right
            leftMargin: 1.5 * Theme.unit
            right: parent.right
            rightMargin: 2 * Theme.unit
            verticalCenter: parent.verticalCenter
        }
        font.pixelSize: Theme.fontSmall
        maximumLineCount: 2
        wrapMode: Text.Wrap
    }
}

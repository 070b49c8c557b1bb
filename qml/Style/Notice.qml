import QtQuick 2.15
import ZelTools.Style 1.0

// A message at the lower edge that disappears after some seconds or when it is touched. show() takes its text, and
// whether it is the reason why something could not be done.
Rectangle {
    id: notice

    property bool isBad: false
    property alias text: label.text
    readonly property bool isShown: opacity > 0

    function show(text, bad) {
        isBad = bad === true
        label.text = text
        timer.restart()
    }
    function hide() {
        timer.stop()
    }

    width: Math.min(row.implicitWidth + 4 * Theme.unit, parent.width - 4 * Theme.unit)
    height: Math.max(Theme.touch, label.implicitHeight + 2 * Theme.unit)
    radius: Theme.radius
    color: Theme.surfaceRaised
    border.color: isBad ? Theme.bad : Theme.accent
    border.width: 2
    opacity: timer.running ? 1 : 0
    visible: isShown

    Behavior on opacity { NumberAnimation { duration: 150 } }
    Timer {
        id: timer
        interval: notice.isBad ? 6000 : 3500
    }
    TapHandler { onTapped: notice.hide() }
    Row {
        id: row
        anchors.centerIn: parent
        spacing: 1.5 * Theme.unit

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            name: notice.isBad ? "alert-circle" : "check-circle"
            color: notice.isBad ? Theme.bad : Theme.accent
        }
        Label {
            id: label
            objectName: "notice.text"
            width: Math.min(implicitWidth, notice.parent.width - 12 * Theme.unit)
            wrapMode: Text.Wrap
            maximumLineCount: 3
        }
    }
}

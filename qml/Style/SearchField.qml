import QtQuick 2.15
import ZelTools.Style 1.0

// A text field for the filter of a list, with a button that clears it.
TextField {
    id: control

    leftPadding: LayoutMirroring.enabled ? Theme.touch : 5 * Theme.unit
    rightPadding: LayoutMirroring.enabled ? 5 * Theme.unit : Theme.touch
    placeholderText: qsTr("Search")
    Accessible.name: placeholderText
    inputMethodHints: Qt.ImhNoPredictiveText

    Icon {
        anchors.left: parent.left
        anchors.leftMargin: 1.25 * Theme.unit
        anchors.verticalCenter: parent.verticalCenter
        name: "magnify"
        size: 22
        color: Theme.textMuted
    }
    IconButton {
        objectName: control.objectName + ".clear"
        anchors.right: parent.right
        visible: control.length > 0
        icon.name: "close"
        fill: "transparent"
        text: qsTr("Clear the search")
        onClicked: control.clear()
    }
}

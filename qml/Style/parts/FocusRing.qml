import QtQuick 2.15
import ZelTools.Style 1.0

// The frame of the control with the keyboard focus. It surrounds the control; touch never shows it.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    radius: Theme.radius + 3
    color: "transparent"
    border.color: Theme.accent
    border.width: 2
}

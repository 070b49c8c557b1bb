import QtQuick 2.15
import ZelTools.Style 1.0

// The side of a spin box that counts up or down.
Rectangle {
    property alias name: icon.name
    property bool isDown: false
    property bool isUsable: true

    width: Theme.touch
    height: Theme.touch
    radius: Theme.radius
    color: isDown ? Theme.pressed : "transparent"

    Icon {
        id: icon
        anchors.centerIn: parent
        color: Theme.accent
        opacity: parent.isUsable ? 1 : 0.35
    }
}

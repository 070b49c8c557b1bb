import QtQuick 2.15
import ZelTools.Style 1.0

// A square button with an icon alone. Its text is not shown; screen readers use it.
Button {
    id: control

    implicitWidth: Theme.touch
    padding: 0
    leftPadding: 0
    Accessible.name: text

    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: control.icon.name
            size: control.icon.width
            color: control.ink
        }
    }
}

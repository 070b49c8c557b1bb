import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// A progress bar.
T.ProgressBar {
    id: control

    implicitWidth: 25 * Theme.unit
    implicitHeight: Theme.unit

    background: Rectangle {
        radius: height / 2
        color: Theme.surfaceRaised
    }
    contentItem: Item {
        Rectangle {
            x: control.mirrored ? parent.width - width : 0
            width: control.visualPosition * parent.width
            height: parent.height
            radius: height / 2
            color: Theme.accent
        }
    }
}

import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// An indicator of work whose end is not known: three dots that appear and disappear.
T.BusyIndicator {
    id: control

    implicitWidth: Theme.touch
    implicitHeight: Theme.touch
    visible: running

    contentItem: Row {
        spacing: Theme.unit
        topPadding: (control.availableHeight - Theme.unit) / 2
        leftPadding: (control.availableWidth - 5 * Theme.unit) / 2

        Repeater {
            model: 3

            Rectangle {
                id: dot
                required property int index
                width: Theme.unit
                height: width
                radius: width / 2
                color: Theme.accent

                // The waits are animations, too: Qt warns when a PauseAnimation is the last one to stop.
                SequentialAnimation on opacity {
                    running: control.running && control.visible
                    loops: Animation.Infinite
                    NumberAnimation { from: 1; to: 1; duration: 150 * dot.index }
                    NumberAnimation { from: 1; to: 0.2; duration: 400 }
                    NumberAnimation { from: 0.2; to: 1; duration: 400 }
                    NumberAnimation { from: 1; to: 1; duration: 300 - 150 * dot.index }
                }
            }
        }
    }
}

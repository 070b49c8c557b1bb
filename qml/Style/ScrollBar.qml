import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// Shows the position in a long page. Users drag the page itself, so the bar may be thin.
T.ScrollBar {
    id: control

    implicitWidth: 10
    implicitHeight: 10
    padding: 2
    minimumSize: 0.08
    visible: size < 1

    contentItem: Rectangle {
        radius: 3
        color: control.pressed ? Theme.accent : Theme.textMuted
        opacity: control.active ? 0.9 : 0.45
    }
}

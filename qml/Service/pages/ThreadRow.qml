import QtQuick 2.15
import ZelTools 1.0
import ZelTools.Style 1.0
import "formats.js" as Formats

// A watched thread. A tap opens the calls in which it has stalled.
Column {
    id: root

    required property int index
    required property string name
    required property int thread
    required property int state
    required property string stateName
    required property real sinceTick
    required property var callStack
    property var locale
    property bool isOpen: false
    readonly property var look: ({
        [Monitor.OnTime]: { icon: "check-circle", tone: Theme.good },
        [Monitor.Late]: { icon: "timer-sand", tone: Theme.warning },
        [Monitor.Stalled]: { icon: "alert-circle", tone: Theme.bad },
        [Monitor.Paused]: { icon: "pause", tone: Theme.textMuted }
    })[state]

    signal clicked()

    ListRow {
        objectName: "threads.row." + root.index
        width: parent.width
        icon.name: root.look.icon
        iconColor: root.look.tone
        text: root.name
        detail: root.thread ? qsTr("Thread %1").arg(Formats.digits(root.thread, root.locale)) : qsTr("Watched item")
        onClicked: root.clicked()

        Label {
            muted: true
            font.pixelSize: Theme.fontSmall
            text: qsTr("%1 since the last tick").arg(Library.duration(root.sinceTick))
        }
        Chip {
            tone: root.look.tone
            text: root.stateName
        }
        Icon {
            name: root.isOpen ? "chevron-up" : "chevron-down"
            color: Theme.textMuted
        }
    }
    Rectangle {
        width: parent.width
        height: visible ? calls.implicitHeight : 0
        visible: root.isOpen
        color: Theme.surface

        Label {
            id: calls
            objectName: "threads.calls"
            LayoutMirroring.enabled: muted && root.LayoutMirroring.enabled // Calls run from left to right.
            width: parent.width
            padding: 2 * Theme.unit
            text: root.callStack.length > 0 ? root.callStack.join("\n")
                  : qsTr("The calls of a thread are known once it has stalled.")
            muted: root.callStack.length === 0
            font.family: muted ? Theme.fontFamily : Theme.monoFamily
            font.pixelSize: Theme.fontSmall
            wrapMode: Text.WrapAnywhere
        }
    }
}

import QtQuick 2.15
import ZelTools.Style 1.0
import "formats.js" as Formats

// A number to choose with a finger: by a drag, by a tap on one of its neighbours, or by the arrow
// keys. moved() is the user's choice.
FocusScope {
    id: wheel

    required property ServicePage page
    property int from: 0
    property int to: 59
    property string caption
    property var textOf: number => Formats.number(number, wheel.page.locale, 0)
    readonly property int rows: page.isWide ? 7 : 5 // that are seen
    readonly property int value: from + view.currentIndex

    signal moved()

    // Shows a number, or the nearest that the wheel has, at once, without the motion that follows a finger.
    function show(number) {
        view.highlightMoveDuration = 0
        view.currentIndex = Math.max(from, Math.min(to, number)) - from
        view.highlightMoveDuration = 150
    }

    function step(count) {
        view.currentIndex = (view.currentIndex + count + view.count) % view.count
        moved()
    }

    implicitWidth: 9 * Theme.unit
    implicitHeight: label.height + view.height
    activeFocusOnTab: true
    Accessible.role: Accessible.SpinBox
    Accessible.name: {
        const name = textOf
        return caption + " " + name(value)
    }
    Keys.onUpPressed: step(-1)
    Keys.onDownPressed: step(1)

    Label {
        id: label
        width: parent.width
        height: 3 * Theme.unit
        text: wheel.caption
        muted: true
        font.pixelSize: Theme.fontSmall
        horizontalAlignment: Text.AlignHCenter
    }
    Rectangle {
        anchors.centerIn: view
        width: wheel.width
        height: Theme.touch
        radius: Theme.radius
        color: Theme.tint(Theme.accent)
        border.color: Theme.accent
        border.width: wheel.activeFocus ? 2 : 1
    }
    PathView {
        id: view
        anchors.top: label.bottom
        width: parent.width
        height: wheel.rows * Theme.touch
        clip: true
        model: wheel.to - wheel.from + 1
        pathItemCount: wheel.rows + 1
        preferredHighlightBegin: 0.5
        preferredHighlightEnd: 0.5
        highlightMoveDuration: 150
        snapMode: PathView.SnapToItem
        path: Path {
            startX: view.width / 2
            startY: -Theme.touch / 2
            PathLine {
                relativeX: 0
                relativeY: (wheel.rows + 1) * Theme.touch
            }
        }
        delegate: Label {
            id: number
            required property int index

            width: PathView.view.width
            height: Theme.touch
            text: wheel.textOf(wheel.from + index)
            muted: !PathView.isCurrentItem
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: muted ? Theme.fontBody : Theme.fontTitle
            font.weight: muted ? Font.Normal : Font.DemiBold

            TapHandler {
                onTapped: {
                    wheel.forceActiveFocus()
                    view.currentIndex = number.index
                    wheel.moved()
                }
            }
        }
        onDragStarted: wheel.forceActiveFocus()
        onMovementEnded: wheel.moved()
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0

// The whole text of a row, which can be selected. A long text comes in parts, because the layout of
// a single line of many thousands of characters would stop the screen.
Dialog {
    id: dialog

    property var region: Qt.locale() // Has the digits of numbers.
    property string line
    property int part: 0
    readonly property int partLength: 4000
    readonly property int partsCount: Math.ceil(line.length / partLength)
    // The height that the title, the buttons and the pages leave for the text.
    readonly property real room: (parent ? parent.height : 0) - (partsCount > 1 ? 33 : 26) * Theme.unit

    function show(caption: string, fullText: string) {
        title = caption
        line = fullText
        part = 0
        open()
    }

    width: parent ? parent.width - 6 * Theme.unit : 0
    acceptText: qsTr("Close")
    rejectText: ""
    onClosed: line = ""
    onPartChanged: view.contentY = 0

    Item {
        id: frame
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(edit.implicitHeight, dialog.room)

        Flickable {
            id: view
            anchors { fill: parent; rightMargin: Theme.touch }
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            contentHeight: edit.implicitHeight

            // A drag over the text selects, so that a finger scrolls at the side.
            ScrollBar.vertical: ScrollBar {
                parent: frame
                anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
                leftPadding: mirrored ? 2 : Theme.touch - 12
                rightPadding: mirrored ? Theme.touch - 12 : 2
                width: Theme.touch
            }

            TextEdit {
                id: edit
                objectName: "line.text"
                width: view.width
                color: Theme.text
                font.family: Theme.monoFamily
                font.pixelSize: Theme.fontBody
                persistentSelection: true
                readOnly: true
                selectByMouse: true
                selectedTextColor: Theme.accentText
                selectionColor: Theme.accent
                text: dialog.line.substr(dialog.part * dialog.partLength, dialog.partLength)
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.Wrap
            }
        }
    }
    PageTurner {
        name: "line"
        visible: pagesCount > 1
        locale: dialog.region
        page: dialog.part
        pagesCount: dialog.partsCount
        onTurned: page => dialog.part = page
    }
}

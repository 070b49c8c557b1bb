import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Templates 2.15 as T
import ZelTools.Style 1.0

// A question over the page: accepted() or rejected() is the answer. Items inside it stand between
// the text and the buttons. It is not a child of the page, so `mirrors` says that text runs from right
// to left. Without a rejectText it is a message.
T.Dialog {
    id: dialog

    property string text
    property string iconName
    property string acceptText: qsTr("OK")
    property string rejectText: qsTr("Cancel")
    property bool isDanger: false
    property bool mirrors: false
    property bool canAccept: true
    default property alias content: extra.data

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(60 * Theme.unit, parent ? parent.width - 4 * Theme.unit : 60 * Theme.unit)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 3 * Theme.unit
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle { color: Theme.dim }
    background: Rectangle {
        radius: 1.5 * Theme.radius
        color: Theme.surface
        border.color: Theme.line
    }
    // A column, since a layout would keep the height that wrapped texts had in its first, narrow state.
    contentItem: Column {
        LayoutMirroring.enabled: dialog.mirrors
        LayoutMirroring.childrenInherit: true
        spacing: 2 * Theme.unit

        RowLayout {
            width: parent.width
            spacing: 1.5 * Theme.unit

            Icon {
                visible: name !== ""
                name: dialog.iconName
                size: 28
                color: dialog.isDanger ? Theme.bad : Theme.accent
            }
            Heading {
                Layout.fillWidth: true
                text: Theme.oneLine(dialog.title)
                maximumLineCount: 2
                wrapMode: Text.Wrap
            }
        }
        Label {
            width: parent.width
            visible: text !== ""
            text: dialog.text
            muted: true
            wrapMode: Text.Wrap
            maximumLineCount: 8 // The buttons stay on a display of 480 pixels.
        }
        ColumnLayout {
            id: extra
            width: parent.width
            spacing: Theme.unit
        }
        Row {
            anchors.right: parent.right
            topPadding: Theme.unit
            spacing: 1.5 * Theme.unit

            Button {
                objectName: "dialog.reject"
                visible: text !== ""
                text: dialog.rejectText
                onClicked: dialog.reject()
            }
            Button {
                objectName: "dialog.accept"
                enabled: dialog.canAccept
                text: dialog.acceptText
                kind: dialog.isDanger ? Button.Danger : Button.Primary
                onClicked: dialog.accept()
            }
        }
    }
}

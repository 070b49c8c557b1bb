import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import ZelTools 1.0
import ZelTools.Style 1.0

// A switch in the list: what it does, its name, and its value. One that is on or off is changed in
// the row itself.
T.AbstractButton {
    id: row

    required property int index
    required property string name
    required property string value
    required property string fullValue
    required property string defaultValue
    required property string source
    required property int type
    required property string typeName
    required property string description
    required property bool isEditable
    required property bool isOn
    property int gap: 2 * Theme.unit
    readonly property bool isChanged: source === "environment"
    readonly property bool isBoolean: type === SwitchesModel.Boolean
    readonly property bool isNumber: type === SwitchesModel.Integer

    signal toggled(bool on)

    implicitHeight: Theme.touch + 2 * Theme.unit
    leftPadding: gap
    rightPadding: gap
    objectName: "switches." + name
    Accessible.name: row.description

    contentItem: Item {
        Rectangle { // The mark of a changed value.
            x: row.mirrored ? parent.width + (row.gap - width) / 2 : -(row.gap + width) / 2
            anchors.verticalCenter: parent.verticalCenter
            width: 4
            height: 5 * Theme.unit
            radius: 2
            color: Theme.accent
            visible: row.isChanged
        }
        Label {
            id: description
            anchors { left: parent.left; right: end.left; rightMargin: 2 * Theme.unit }
            y: Theme.unit
            height: 3 * Theme.unit
            maximumLineCount: 1
            text: row.description.replace(/\n/g, " ")
        }
        Label {
            anchors { left: parent.left; right: end.left; rightMargin: 2 * Theme.unit; top: description.bottom }
            height: 3 * Theme.unit
            font.pixelSize: Theme.fontSmall
            muted: true
            text: row.name
        }
        Item {
            id: end
            anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
            width: row.isBoolean ? toggle.implicitWidth : row.width / 4

            Switch {
                id: toggle
                anchors.verticalCenter: parent.verticalCenter
                objectName: "switches.toggle." + row.name
                Accessible.name: row.description
                checked: row.isOn
                opacity: row.isEditable ? 1 : 0.6
                visible: row.isBoolean
                onToggled: {
                    row.toggled(checked)
                    checked = Qt.binding(() => row.isOn) // A refused change is taken back.
                }
            }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width
                color: row.isChanged ? Theme.accent : row.source === "unset" ? Theme.textMuted : Theme.text
                horizontalAlignment: Text.AlignRight
                visible: !row.isBoolean
                text: row.source === "unset" ? qsTr("not set") : row.value || qsTr("empty")
            }
        }
    }
    background: Rectangle {
        color: row.down ? Theme.surfaceRaised : "transparent"
        border.color: Theme.accent
        border.width: row.visualFocus ? 2 : 0

        Rectangle {
            y: parent.height - 1
            width: parent.width
            height: 1
            color: Theme.line
            opacity: 0.6
        }
    }
}

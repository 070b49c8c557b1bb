import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The log modules: a tap on one shows its lines only, and its switch turns its debug lines on or off.
Dialog {
    id: dialog

    property string chosen // The name of a module, or empty for all.
    property string reason // Why the last switch was not turned.

    title: qsTr("Log modules")
    text: qsTr("A tap shows the lines of one module. The switch turns debug lines on.")
    acceptText: qsTr("All modules")
    rejectText: qsTr("Close")
    onAboutToShow: reason = ""
    onAccepted: chosen = ""

    TouchList {
        id: list
        Layout.fillWidth: true
        Layout.preferredHeight: (dialog.parent ? dialog.parent.height : 0) - 38 * Theme.unit // The rest takes this much.
        objectName: "modules.list"

        model: LogModulesModel {
            id: modules
        }
        delegate: ListRow {
            id: row

            required property int index
            required property string name
            required property bool isDebugged

            width: ListView.view.width
            objectName: "modules." + name
            highlighted: name === dialog.chosen
            text: name
            onClicked: {
                dialog.chosen = name
                dialog.close()
            }

            Switch {
                objectName: "modules.debug." + row.name
                Accessible.name: row.name
                checked: row.isDebugged
                onToggled: {
                    dialog.reason = modules.setDebugged(row.index, checked)
                    checked = Qt.binding(() => row.isDebugged) // A refused change is taken back.
                }
            }
        }
    }
    Label {
        Layout.fillWidth: true
        objectName: "modules.reason"
        color: Theme.bad
        font.pixelSize: Theme.fontSmall
        text: dialog.reason
    }
}

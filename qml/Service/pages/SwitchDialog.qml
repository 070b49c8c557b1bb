import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0

// One switch with all that is known about it, and the means to change it. When a change is refused,
// the dialog stays open and says why.
Dialog {
    id: dialog

    property string name
    property string facts
    property string reason // Why nothing was changed.
    property bool isBoolean
    property bool isNumber
    property bool isChanged
    property bool mayChange

    // Asks for this value, or with undefined for that of the build. The answer is a call of finish().
    signal proposed(var value)

    function show(row) {
        name = row.name
        title = row.description
        text = row.name
        isBoolean = row.isBoolean
        isNumber = row.isNumber
        isChanged = row.isChanged
        facts = (row.defaultValue === "" ? qsTr("%1. The build gives no value.").arg(row.typeName)
                 : qsTr("%1. The build gives the value %2.").arg(row.typeName).arg(row.defaultValue))
                + " " + (row.isChanged ? qsTr("The present value comes from the environment.")
                         : row.source === "build" ? qsTr("It is the present value.") : qsTr("No value is set."))
        field.text = row.fullValue
        toggle.checked = row.isOn
        reason = ""
        open()
    }

    function finish(problem) {
        reason = problem
        if (reason === "")
            close()
        else
            field.forceActiveFocus()
    }

    // Takes the place of the dialog's own function, which closes it in any case.
    function accept() {
        if (mayChange)
            proposed(isBoolean ? (toggle.checked ? "1" : "0") : field.text)
        else
            close()
    }

    acceptText: mayChange ? qsTr("Set") : qsTr("Close")
    rejectText: mayChange ? qsTr("Cancel") : ""
    onOpened: if (mayChange && !isBoolean) field.forceActiveFocus()

    Label {
        Layout.fillWidth: true
        font.pixelSize: Theme.fontSmall
        muted: true
        text: dialog.facts
        wrapMode: Text.Wrap
    }
    Switch {
        id: toggle
        objectName: "switch.toggle"
        enabled: dialog.mayChange
        text: checked ? qsTr("On") : qsTr("Off")
        visible: dialog.isBoolean
    }
    TextField {
        id: field
        Layout.fillWidth: true
        objectName: "switch.value"
        inputMethodHints: dialog.isNumber ? Qt.ImhFormattedNumbersOnly : Qt.ImhNoPredictiveText
        isRefused: dialog.reason !== ""
        readOnly: !dialog.mayChange
        visible: !dialog.isBoolean
        onAccepted: dialog.accept()
        onTextEdited: dialog.reason = ""
    }
    Label {
        Layout.fillWidth: true
        objectName: "switch.reason"
        color: Theme.bad
        font.pixelSize: Theme.fontSmall
        maximumLineCount: 4
        text: dialog.reason
        visible: text !== ""
        wrapMode: Text.Wrap
    }
    Button {
        objectName: "switch.reset"
        icon.name: "undo"
        text: qsTr("Back to the value of the build")
        visible: dialog.isChanged && dialog.mayChange
        onClicked: dialog.proposed(undefined)
    }
}

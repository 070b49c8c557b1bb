import QtQuick 2.15
import ZelTools.Style 1.0

// The question of Service.confirm().
Dialog {
    id: question

    property var action: null

    function ask(title, text, acceptText, accepted) {
        question.title = title
        question.text = text
        question.acceptText = acceptText
        action = accepted
        open()
    }

    iconName: "alert"
    isDanger: true
    onAccepted: {
        const accepted = action
        accepted()
    }
}

import QtQuick 2.15
import ZelTools 1.0

ListView {
    model: LogModel {
        level: LogModel.Warning
        filter: "grinder"
    }
    delegate: Text {
        required property string text

        textFormat: Text.PlainText
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools.Style 1.0

// A framed group of items with an optional title. Its items are laid out in a column.
Rectangle {
    id: card

    property alias title: heading.text
    property alias iconName: icon.name
    property color iconColor: Theme.accent
    property int padding: 2 * Theme.unit
    default property alias content: column.data

    // No bindings, because the column measures wrapped texts only when it is asked for its size,
    // which then changes while the binding reads it.
    function measure() {
        implicitWidth = outer.implicitWidth + 2 * padding
        implicitHeight = outer.implicitHeight + 2 * padding
    }

    radius: 1.2 * Theme.radius
    color: Theme.surface
    onPaddingChanged: measure()

    ColumnLayout {
        id: outer
        anchors.fill: parent
        anchors.margins: card.padding
        spacing: 1.5 * Theme.unit
        onImplicitWidthChanged: card.measure()
        onImplicitHeightChanged: card.measure()

        RowLayout {
            visible: heading.text !== ""
            spacing: Theme.unit

            Icon {
                id: icon
                visible: name !== ""
                size: 22
                color: card.iconColor
            }
            Heading {
                id: heading
                Layout.fillWidth: true
                font.pixelSize: Theme.fontBody
            }
        }
        ColumnLayout {
            id: column
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.unit
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The state machines that the application offers for viewing: where one of them is and for how long,
// how it came there, and its picture.
ServicePage {
    id: page

    // Keeps the machine that is shown, in whatever row it is now. If it has gone, shows the first one.
    function keep() {
        choice.currentIndex = machines.count === 0 ? -1 : Math.max(choice.indexOfValue(present.machine), 0)
        present.machine = choice.valueAt(choice.currentIndex) || null
    }

    title: qsTr("Machine")
    icon: "sitemap"

    MachinesModel { id: machines }
    MachineView {
        id: present
        live: page.visible
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: page.gap
        anchors.rightMargin: page.gap
        anchors.bottomMargin: page.gap
        visible: machines.count > 0
        spacing: page.gap

        MachinePicture {
            id: picture
            Layout.fillWidth: true
            Layout.fillHeight: true
            machine: present.machine
        }
        ColumnLayout {
            Layout.fillWidth: false
            Layout.preferredWidth: page.isWide ? 34 * Theme.unit : 27 * Theme.unit
            spacing: Theme.unit

            ComboBox {
                id: choice
                objectName: "machine.choice"
                Layout.fillWidth: true
                model: machines
                textRole: "name"
                valueRole: "machine"
                onActivated: present.machine = currentValue
                onCountChanged: page.keep()
            }
            Card {
                Layout.fillWidth: true
                padding: 1.5 * Theme.unit

                Heading {
                    objectName: "machine.state"
                    Layout.fillWidth: true
                    text: present.isRunning ? present.state : qsTr("Not running")
                    color: present.isRunning ? Theme.accent : Theme.textMuted
                    wrapMode: Text.Wrap
                    maximumLineCount: 3
                }
                Label {
                    Layout.fillWidth: true
                    muted: true
                    opacity: present.isRunning ? 1 : 0 // It keeps its place.
                    text: qsTr("for %1").arg((present.isStateTimeKnown ? "" : "≥ ") + Library.duration(present.stateTime))
                }
            }
            Card {
                Layout.fillWidth: true
                Layout.fillHeight: true
                padding: 1.5 * Theme.unit
                iconName: "history"
                title: qsTr("Last changes")

                TouchList {
                    objectName: "machine.path"
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    model: present.path
                    spacing: Theme.unit
                    delegate: MachineStep {
                        width: ListView.view.width - Theme.unit
                        locale: page.locale
                    }
                }
            }
            RowLayout {
                visible: picture.hasPicture
                spacing: Theme.unit

                IconButton {
                    objectName: "machine.zoomOut"
                    Layout.fillWidth: true
                    icon.name: "magnify-minus"
                    text: qsTr("Smaller")
                    onClicked: picture.zoomBy(0.8)
                }
                IconButton {
                    objectName: "machine.zoomIn"
                    Layout.fillWidth: true
                    icon.name: "magnify-plus"
                    text: qsTr("Larger")
                    onClicked: picture.zoomBy(1.25)
                }
                IconButton {
                    objectName: "machine.all"
                    Layout.fillWidth: true
                    kind: picture.showsAll ? Button.Primary : Button.Normal
                    icon.name: "fullscreen"
                    text: qsTr("Fit to view")
                    onClicked: picture.showsAll ? picture.showPart() : picture.showAll()
                }
            }
        }
    }
    EmptyState {
        objectName: "machine.none"
        anchors.fill: parent
        visible: machines.count === 0
        icon: page.icon
        title: qsTr("No machine to show")
        text: qsTr("The application offers its state machines to this page by ViewedMachines::offer().")
    }
}

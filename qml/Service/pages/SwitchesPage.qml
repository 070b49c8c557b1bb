import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The switches of the application by category. A technician may change them; everyone sees what
// they are and where their values come from.
ServicePage {
    id: page

    readonly property bool mayChange: Library.access.level >= Access.Technician

    onMayChangeChanged: if (!mayChange) editor.close() // It may show a secret.

    // Sets the switch, or resets it without a value. Rows move while a dialog is open, names don't.
    function change(name, value) {
        for (let row = 0; row < switches.count; ++row) {
            if (switches.data(switches.index(row, 0)) === name)
                return value === undefined ? switches.reset(row) : switches.setValue(row, value)
        }
        return qsTr("The switch is not in the list any more.")
    }

    title: qsTr("Switches")
    icon: "tune"

    SwitchesModel {
        id: switches
        environmentFile: page.service.environmentFile
        filter: search.text
        onlyChanged: changed.checked
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.leftMargin: page.gap
            Layout.rightMargin: page.gap
            Layout.bottomMargin: Theme.unit
            spacing: Theme.unit

            ComboBox {
                Layout.preferredWidth: 24 * Theme.unit
                objectName: "switches.category"
                model: switches.categories
                textRole: "name"
                valueRole: "value"
                onActivated: switches.category = currentValue
                onModelChanged: currentIndex = indexOfValue(switches.category) // Others, or in another language.
                Component.onCompleted: currentIndex = indexOfValue(switches.category)
            }
            SearchField {
                id: search
                Layout.fillWidth: true
                objectName: "switches.search"
            }
            Button {
                id: changed
                objectName: "switches.changed"
                checkable: true
                icon.name: "pencil"
                text: qsTr("Changed")
            }
        }
        Banner {
            Layout.fillWidth: true
            objectName: "switches.locked"
            iconName: "lock-outline"
            tone: Theme.textMuted
            visible: !page.mayChange
            text: qsTr("You can look at all switches. A technician can change them.")
        }
        RowLayout {
            visible: switches.fileProblem !== ""
            spacing: 0

            Banner {
                Layout.fillWidth: true
                Layout.fillHeight: true
                objectName: "switches.fileProblem"
                text: switches.fileProblem
            }
            Button {
                objectName: "switches.save"
                text: qsTr("Save again")
                icon.name: "content-save"
                onClicked: page.service.report(switches.save(), qsTr("Saved"))
            }
        }
        TouchList {
            id: list
            Layout.fillWidth: true
            Layout.fillHeight: true
            objectName: "switches.list"
            model: switches

            section.property: "categoryName"
            section.delegate: Label {
                required property string section

                width: ListView.view.width
                height: 4.5 * Theme.unit
                leftPadding: page.gap
                rightPadding: page.gap
                color: Theme.accent
                font.pixelSize: Theme.fontSmall
                font.weight: Font.DemiBold
                text: section
                verticalAlignment: Text.AlignBottom
            }

            delegate: SwitchRow {
                width: ListView.view.width
                gap: page.gap
                onClicked: editor.show(this)
                onToggled: on => page.service.report(page.change(name, on ? "1" : "0"), "")
            }

            EmptyState {
                anchors.fill: parent
                objectName: "switches.empty"
                visible: list.count === 0
                icon: page.icon
                title: qsTr("No switches")
                text: qsTr("No switch matches the filters above.")
            }
        }
    }
    Connections {
        target: Library
        function onLanguageChanged() {
            editor.close() // Its texts are those of the row when it was opened.
        }
    }
    SwitchDialog {
        id: editor
        objectName: "switch"
        mayChange: page.mayChange
        mirrors: page.service.mirrors
        onProposed: value => finish(page.change(name, value))
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// The services that keep the clock right, and the packages that they need.
RowLayout {
    id: root

    required property ServicePage page
    readonly property var packages: ({
        Ntp: { name: "ntp", use: qsTr("Network time by ntpd"),
               get: qsTr("To get it: apt install ntp, and a server of pool.ntp.org in /etc/ntp.conf") },
        Tzdata: { name: "tzdata", use: qsTr("Time zones"), get: qsTr("To get it: apt install tzdata") },
        TimeSync: { name: "systemd-timesyncd", use: qsTr("Network time by systemd"),
                    get: qsTr("To get it: apt install systemd-timesyncd") }
    })

    spacing: page.gap

    Card {
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredWidth: 1
        iconName: "server"
        title: qsTr("Services")

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            TouchList {
                objectName: "time.services"
                anchors.fill: parent
                visible: services.count > 0
                model: ServicesModel { id: services }
                delegate: ListRow {
                    id: row
                    required property int index
                    required property string name
                    required property bool isAvailable
                    required property bool isEnabled

                    width: ListView.view.width
                    enabled: isAvailable
                    text: name === "Ntp" ? qsTr("Network time") : name
                    detail: isAvailable ? "" : qsTr("Not supported by this machine")
                    onClicked: toggle.switchTo(!isEnabled)

                    Switch {
                        id: toggle
                        objectName: "time.service." + row.name
                        Accessible.name: row.text

                        // The switch shows the state of the service, also after a refusal.
                        function switchTo(on) {
                            root.page.service.report(services.setEnabled(row.index, on), "")
                            checked = Qt.binding(() => row.isEnabled)
                        }

                        checked: row.isEnabled
                        onToggled: switchTo(checked)
                    }
                }
            }
            EmptyState {
                anchors.fill: parent
                visible: services.count === 0
                icon: "server"
                title: qsTr("No service")
                text: qsTr("The application adds its services, such as service::Ntp, to the ServiceManager.")
            }
        }
    }
    Card {
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredWidth: 1
        iconName: "package-variant-closed"
        title: qsTr("Packages")

        TouchList {
            objectName: "time.packages"
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: PackagesModel {}
            delegate: PackageRow {
                width: ListView.view.width
                facts: root.packages[name] || { name: name, use: "", get: "" }
            }
        }
    }
}

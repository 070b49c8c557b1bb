import QtQuick 2.15
import QtQuick.Layouts 1.15
import ZelTools 1.0
import ZelTools.Style 1.0

// Packs what the factory needs to know about the machine into one file on a stick.
ServicePage {
    id: page

    // It belongs to the screen: a bundle goes on while the user looks at other pages.
    readonly property BundleTask bundle: service.bundle

    title: qsTr("Support")
    icon: "usb"

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: page.gap
        anchors.rightMargin: page.gap
        anchors.bottomMargin: page.gap
        visible: page.bundle.isAvailable
        spacing: page.gap

        Card {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            iconName: "usb"
            title: qsTr("Where the bundle goes")

            BundlePlaces {
                Layout.fillWidth: true
                Layout.fillHeight: true
                enabled: !page.bundle.running
                task: page.bundle
                folder: page.service.bundleFolder
                locale: page.locale
            }
        }
        Card {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            iconName: "archive"
            title: qsTr("Support bundle")

            BundleProgress {
                Layout.fillWidth: true
                Layout.fillHeight: true
                task: page.bundle
                locale: page.locale
            }
        }
    }
    EmptyState {
        anchors.fill: parent
        visible: !page.bundle.isAvailable
        icon: "archive"
        title: qsTr("This build makes no support bundles")
        text: qsTr("Install Debian's package libarchive-dev and build the library with the CMake option ZELTOOLS_LIBARCHIVE.")
    }
}

SUMMARY = "Shared library beneath the application of vending and coffee machines"
SECTION = "libs"
# No licence has been granted; the icon font of the service screen, which is in ${PN}-qml, has its own.
LICENSE = "Proprietary & OFL-1.1"
LICENSE:${PN} = "Proprietary"
LICENSE:${PN}-tools = "Proprietary"
LICENSE:${PN}-dev = "Proprietary"
LICENSE:${PN}-dbg = "Proprietary"
LICENSE:${PN}-doc = "Proprietary"
LIC_FILES_CHKSUM = "file://LICENSE;md5=cff996e491c5a90e39dccd4aea82ab0e"

# Which Qt the image has: 5 (meta-qt5) or 6 (meta-qt6). An image has one, since hosts of one can't load
# the library of the other.
ZELTOOLS_QT ?= "5"
# The machine model decides about the default values of switches: ARIETTA, CADENZA, SONATA or VIVO.
ZELTOOLS_MODEL ?= "VIVO"

inherit externalsrc ${@'qt6-cmake' if d.getVar('ZELTOOLS_QT') == '6' else 'cmake_qt5'} pkgconfig
EXTERNALSRC ?= "${ZELTOOLS_CHECKOUT}"

DEPENDS = "qtbase ${@'qtscxml' if d.getVar('ZELTOOLS_QT') == '6' else ''}"

PACKAGECONFIG ??= "libcrypto libarchive monitoring \
                   ${@bb.utils.filter('DISTRO_FEATURES', 'systemd', d)}"
# libcrypto and libsystemd are loaded when they are needed, so bitbake does not see that they are used.
PACKAGECONFIG[libcrypto] = "-DZELTOOLS_LIBCRYPTO=ON,-DZELTOOLS_LIBCRYPTO=OFF,openssl,,libcrypto"
PACKAGECONFIG[libarchive] = "-DZELTOOLS_LIBARCHIVE=ON,-DZELTOOLS_LIBARCHIVE=OFF,libarchive"
PACKAGECONFIG[systemd] = "-DZELTOOLS_LIBSYSTEMD=ON,-DZELTOOLS_LIBSYSTEMD=OFF,systemd,,libsystemd"
PACKAGECONFIG[monitoring] = "-DZELTOOLS_MONITORING=ON,-DZELTOOLS_MONITORING=OFF"
# The service screen needs the icon font too, see docs/yocto.md.
PACKAGECONFIG[quick] = "-DZELTOOLS_QUICK=ON -DZELTOOLS_ICON_FONT=${ZELTOOLS_ICON_FONT},-DZELTOOLS_QUICK=OFF,qtdeclarative qtdeclarative-native qttools-native"
ZELTOOLS_ICON_FONT ?= "${STAGING_DATADIR}/fonts/ttf/materialdesignicons-webfont.ttf"

# Where the Qt of the image looks for QML modules.
ZELTOOLS_QML_DIR = "${libdir}/qml"
EXTRA_OECMAKE = "-DZELTOOLS_BUILD=board \
                 -DZELTOOLS_MODEL=${ZELTOOLS_MODEL} \
                 -DZELTOOLS_QT=${ZELTOOLS_QT} \
                 -DZELTOOLS_INSTALL_QML_DIR=${baselib}/qml \
                 -DBUILD_TESTING=OFF"

PACKAGE_BEFORE_PN = "${PN}-tools ${PN}-qml"
FILES:${PN}-tools = "${bindir}/zelctl \
                     ${datadir}/zeltools \
                     ${datadir}/bash-completion \
                     ${datadir}/zsh \
                     ${datadir}/fish"
FILES:${PN}-qml = "${libdir}/libZelToolsQuick${SOLIBS} ${ZELTOOLS_QML_DIR}"
# gdb loads these scripts together with the library.
FILES:${PN}-dbg += "${datadir}/gdb"

# The simulator zelsim.py imports modules from asyncio to unicodedata, which openembedded-core divides among
# many packages.
RRECOMMENDS:${PN}-tools = "python3-modules"
# Qt's own QML modules, which the service screen imports. The templates of controls are a part of
# qtdeclarative only with Qt 6.
RDEPENDS:${PN}-qml = "qtdeclarative-qmlplugins ${@'' if d.getVar('ZELTOOLS_QT') == '6' else 'qtquickcontrols2-qmlplugins'}"

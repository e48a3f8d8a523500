# SPDX-License-Identifier: Apache-2.0
SUMMARY = "Test of the Wi-Fi module, driver and supplicant of a device"
DESCRIPTION = "wivex proves the Wi-Fi of an embedded device: that the module is on its bus, its \
driver is ready, and its supplicant can scan, associate, take an address, carry traffic and disconnect."
SECTION = "net"
LICENSE = "Apache-2.0"
LIC_FILES_CHKSUM = "file://LICENSE;md5=3b83ef96387f14655fc854ddc3c6bd57"

# README.md beside this layer tells how to make the tarball.
SRC_URI = "file://wivex-${PV}.tar.gz"

DEPENDS = "libnl"

inherit cmake pkgconfig bash-completion

PACKAGECONFIG ??= ""
PACKAGECONFIG[report] = "-DWIVEX_COMPANION=ON,-DWIVEX_COMPANION=OFF,boost cli11 nlohmann-json pugixml xxhash"

# The only folder in which the tool looks for its configuration.
WIVEX_CONFIG_DIR = "${nonarch_base_libdir}/modules/wifi"
EXTRA_OECMAKE = "-DWIVEX_CONFIG_DIR=${WIVEX_CONFIG_DIR}"

PACKAGES =+ "${PN}-report"
FILES:${PN} += "${WIVEX_CONFIG_DIR}"
FILES:${PN}-report = "${bindir}/wivex-report"

# These files are edited on the device: an upgrade keeps them.
CONFFILES:${PN} = "${WIVEX_CONFIG_DIR}/wivex.cfg ${WIVEX_CONFIG_DIR}/wivex_qca.cfg \
    ${WIVEX_CONFIG_DIR}/wivex_softap.cfg"

RRECOMMENDS:${PN} = "wpa-supplicant"
RSUGGESTS:${PN} = "iperf2"

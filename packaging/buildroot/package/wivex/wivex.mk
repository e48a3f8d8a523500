# SPDX-License-Identifier: Apache-2.0
################################################################################
#
# wivex
#
################################################################################

# The tree that this recipe stands in. To build from a tarball on a server of your own, set
# WIVEX_SITE to the server's folder and WIVEX_SOURCE to the file, remove WIVEX_SITE_METHOD, and add the
# tarball's hash to wivex.hash.
WIVEX_VERSION = 2.0
WIVEX_SITE = $(BR2_EXTERNAL_WIVEX_PATH)/../..
WIVEX_SITE_METHOD = local
WIVEX_LICENSE = Apache-2.0
WIVEX_LICENSE_FILES = LICENSE
WIVEX_DEPENDENCIES = host-pkgconf libnl
# The only folder in which the tool looks for its configuration.
WIVEX_CONF_OPTS = -DWIVEX_CONFIG_DIR=/lib/modules/wifi

ifeq ($(BR2_STATIC_LIBS),y)
WIVEX_CONF_OPTS += -DWIVEX_STATIC=ON
endif

ifeq ($(BR2_PACKAGE_WIVEX_REPORT),y)
WIVEX_DEPENDENCIES += boost cli11 json-for-modern-cpp pugixml xxhash
WIVEX_CONF_OPTS += -DWIVEX_COMPANION=ON
else
WIVEX_CONF_OPTS += -DWIVEX_COMPANION=OFF
endif

$(eval $(cmake-package))

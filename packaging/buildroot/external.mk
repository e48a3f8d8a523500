# SPDX-License-Identifier: Apache-2.0
include $(sort $(wildcard $(BR2_EXTERNAL_WIVEX_PATH)/package/*/*.mk))

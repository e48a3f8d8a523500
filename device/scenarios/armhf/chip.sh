# SPDX-License-Identifier: Apache-2.0
# The chip's own back doors, on a kernel whose radio does not have them; and the address check.

# A radio that is up, beside the module with these USB ids.
chip_world() {
    plug_module "$1"
    ifconfig wlan0 up
}

debugfs_phys=/sys/kernel/debug/ieee80211

broadcom_requests_are_refused() {
    chip_world "$1"
    run_tool -u -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1' 'Test case 4 fail # 1'
    expect_out "[WIFI]Chip type is = $2"
    expect_out '[WIFI]##### Failed to set loopback mode to driver #####'
    expect_out '[WIFI]### LOOPBACK FAIL ###'
    expect_out '[WIFI]MAC from kernel ioctl :- 02:00:00:00:00:00'
    expect_out '[WIFI]##### ioctl Failed to send driver #####'
    expect_out '[WIFI]MAC PRINT FAIL'
    unplug_module
}

scenario_loopback_and_address_are_refused_to_broadcom_modules() {
    broadcom_requests_are_refused 0a5c:bd27 3
    broadcom_requests_are_refused 9e0c:20a0 5
}

scenario_loopback_is_not_supported_by_the_other_broadcom_module() {
    chip_world 0a5c:bd1d
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 fail # 1'
    expect_out '[WIFI]LOOPBACK is not supported for this chip'
}

scenario_loopback_and_address_are_refused_to_a_qca_combo_module() {
    chip_world 0cf3:9378
    run_tool -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1' 'Test case 4 fail # 1'
    expect_out '[WIFI]Chip type is = 2'
    expect_order '[WIFI] Loopback about to start ' '[WIFI]No private ioctl is for wlan0 interface...' \
        '[WIFI]### LOOPBACK FAIL ###'
    expect_err '[WIFI]err firmware_mac_address_qca_combo failed (2) to open DIAG file (/proc/cld/athdiagpfs)'
}

# The flow looks at no command's end, and reads its values from the text of its own commands.
scenario_the_ath6kl_loopback_mounts_debugfs_and_does_not_miss_its_files() {
    chip_world 0cf3:1022
    add_usbfs
    umount /sys/kernel/debug
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_out '[WIFI]Chip type is = 1'
    expect_out '[WIFI]LOOPBACK SUCCESS'
    expect_err '[WIFI][Trying to Mount Debugfs for Wi-Fi]' 1
    expect_err '[WIFI]Debugfs is Mounted'
    expect_err_matching "can't create $debugfs_phys/phy[0-9]+/ath6kl/aow: nonexistent directory" 2
    expect_err_matching "can't create $debugfs_phys/phy[0-9]+/ath6kl/reg_addr: nonexistent directory" 2
    expect_err_matching "can't open '$debugfs_phys/phy[0-9]+/ath6kl/reg_dump': No such file or directory" 2
}

scenario_the_ath6kl_loopback_fails_without_a_radio() {
    chip_world 0cf3:1022
    modprobe -r mac80211_hwsim
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 fail # 1' 'Test case 4 fail # 1'
    expect_err '[WIFI]Debugfs Mount Error : Does not exist = /sys/kernel/debug/ieee80211' 1
}

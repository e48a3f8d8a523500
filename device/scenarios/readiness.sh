# SPDX-License-Identifier: Apache-2.0
# The module on the bus, its driver and its interface.

ready_world() {
    echo check_iperf=no >>/lib/modules/wifi/wivex.cfg
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
}

scenario_the_shipped_configuration_passes_on_a_kernel_of_today() {
    cp /device/examples/wivex.cfg /lib/modules/wifi/wivex.cfg
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 LINE-AP-1 change-this-phrase)"
    start_services home wlan1 192.168.49.1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    [ ! -e /proc/bus/usb ] || fail "this kernel is not one of today"
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_out '[WIFI]Chip type is = 3'
    expect_out '[WIFI]Chip vendor id = 0a5c and product id bd27'
    expect_err_matching '^mount: mounting none on /proc/bus/usb/ failed'
}

# What a kernel up to 3.4 offers, read as its device type says.
scenario_a_kernel_with_usbfs_is_asked_there() {
    ready_world
    add_usbfs
    plug_module 0cf3:9378
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_out '[WIFI]USBFS is already Mounted'
    expect_out '[WIFI]Chip type is = 2'
}

# The device type of usbfs on a kernel that has none.
scenario_a_kernel_of_today_has_no_list_for_the_device_type_of_usbfs() {
    ready_world
    configure device_type=USB
    plug_module 0a5c:bd27
    run_tool -u -w -m 1
    expect_result 'Test case 1 fail # 1' 'Test case 2 passed ' 'Test case 8 passed '
    expect_out 'ERROR:Unable to open file /proc/bus/usb/devices'
    expect_out '[WIFI]ERROR:Module not inserted. check Insmod [*].ko'
}

scenario_an_absent_module_fails_test_case_1_alone() {
    ready_world
    plug_module 1d6b:0104
    run_tool -w -m 1
    expect_result 'Test case 1 fail # 1' 'Test case 2 passed ' 'Test case 8 passed '
    expect_out '[WIFI]ERROR:Module not inserted. check Insmod [*].ko'
}

scenario_a_module_unplugged_between_iterations_fails_once() {
    begins_later=yes
    ready_world
    plug_module 9e0c:20a0
    start_tool -w -m 2
    await_out 60 'Call to DISABLE_NETWORK is successful...'
    unplug_module
    finish_tool
    expect_out '[WIFI]Chip type is = 5' 1
    expect_result 'Test case 1 fail # 1' 'Test case 2 passed ' 'Test case 8 passed '
}

scenario_an_interface_down_at_the_start_is_brought_up() {
    ready_world
    plug_module 0a5c:bd27
    ifconfig wlan0 down
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_out '[WIFI]WIFI DRIVER READY'
}

scenario_an_interface_taken_down_between_iterations_is_failure_3() {
    begins_later=yes
    ready_world
    plug_module 0a5c:bd27
    start_tool -w -m 2
    await_out 60 'Call to DISABLE_NETWORK is successful...'
    ifconfig wlan0 down
    finish_tool
    expect_out '[WIFI]ERROR:WiFi network interface not up(check supplicant)' 1
    expect_out 'ERROR:SCAN-FAIL' 1
    expect_result 'Test case 1 passed ' 'Test case 2 fail # 1' 'Test case 8 fail # 1'
}

scenario_a_driver_removed_between_iterations_is_failure_2() {
    begins_later=yes
    ready_world
    plug_module 0a5c:bd27
    start_tool -w -m 2
    await_out 60 'Call to DISABLE_NETWORK is successful...'
    modprobe -r mac80211_hwsim
    finish_tool
    expect_out '[WIFI]ERROR:WiFi driver is not insmoded properly, Please check WiFi driver status...' 1
    expect_out 'ERROR:SCAN-FAIL' 1
    expect_result 'Test case 1 passed ' 'Test case 2 fail # 1' 'Test case 8 fail # 1'
}

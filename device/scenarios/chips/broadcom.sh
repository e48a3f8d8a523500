# SPDX-License-Identifier: Apache-2.0
# The Broadcom chips: what the tool asks passes through a real kernel to a driver of ours.

broadcom_world() {
    plug_chip bcmdhd "${1:-0a5c:bd27}"
    configure loopback_pkt_size=512 loopback_pkt_cnt=10
}

loopback_parameter=/sys/module/bcmdhd/parameters/usbloop_enable

expect_loopback_parameter() {
    [ "$(cat $loopback_parameter)" = "$1" ] || fail "the driver's loopback parameter is not $1"
}

loopback_and_address_pass() {
    broadcom_world "$1"
    run_tool -u -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    expect_out "[WIFI]Chip type is = $2"
    expect_out '[WIFI]MAC address from wl ioctl :-  02:0A:F5:12:34:56'
    expect_out '[WIFI]===> Loopback Test Passed Successfully 01<==='
    expect_chip_address 02:0A:F5:12:34:56
    expect_loopback_parameter 1
    unload_driver bcmdhd
    unplug_module
}

scenario_broadcom_loopback_and_address_pass() {
    loopback_and_address_pass 0a5c:bd27 3
    loopback_and_address_pass 9e0c:20a0 5
}

# Byte by byte; the buffer is as long as the record says.
scenario_broadcom_requests_arrive_as_they_were_made() {
    broadcom_world
    run_tool -l -M -m 1
    if tool_is_32_bit; then
        expect_requests <<END
request variable
  record 06 01 00 00 ** ** ** ** 0e 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00
  buffer 63 75 72 5f 65 74 68 65 72 61 64 64 72 00
  result 0
request variable
  record 07 01 00 00 ** ** ** ** 11 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00
  buffer 62 75 73 3a 6c 6f 6f 70 62 61 63 6b 00 01 00 00 00
  result 0
request variable
  record 03 00 00 00 ** ** ** ** 19 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 44 49 44 00
  buffer 75 73 62 5f 6c 62 5f 74 78 66 65 72 00 00 02 00 00 0a 00 00 00 ff ff ff ff
  result 0
END
    else
        expect_requests <<END
request variable
  record 06 01 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 0e 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00
  buffer 63 75 72 5f 65 74 68 65 72 61 64 64 72 00
  result 0
request variable
  record 07 01 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 11 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00
  buffer 62 75 73 3a 6c 6f 6f 70 62 61 63 6b 00 01 00 00 00
  result 0
request variable
  record 03 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 19 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 44 49 44 00 00 00 00 00
  buffer 75 73 62 5f 6c 62 5f 74 78 66 65 72 00 00 02 00 00 0a 00 00 00 ff ff ff ff
  result 0
END
    fi
}

scenario_broadcom_loopback_fails_when_packets_are_lost() {
    broadcom_world
    chip 'usb_lb_txfer lost=3'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 fail # 1'
    expect_out '[WIFI]Loopback fail, status  0'
    # Only the lowest byte of the status counts.
    chip 'usb_lb_txfer status=0x100'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 fail # 1'
    chip 'usb_lb_txfer status=0x2a'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_out '[WIFI]===> Loopback Test Passed Successfully 2a<==='
    chip 'usb_lb_txfer untouched=1'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_out '[WIFI]===> Loopback Test Passed Successfully ff<==='
}

scenario_broadcom_address_differs_from_the_kernels() {
    broadcom_world
    chip 'cur_etheraddr text=02:0a:f5:12:34:57'
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1'
    expect_out '[WIFI]MAC from kernel ioctl :- 02:0A:F5:12:34:56'
    expect_out '[WIFI]MAC address from wl ioctl :-  02:0A:F5:12:34:57'
    expect_out '[WIFI]Both addresses are not same...'
    expect_chip_address 02:0A:F5:12:34:57

    # Behind a short answer stands what was sent: "_et" of the variable's name.
    chip 'cur_etheraddr short=3'
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1'
    expect_chip_address 02:0A:F5:5F:65:74

    chip cur_etheraddr
    ifconfig wlan0 down hw ether 02:aa:22:33:44:55
    ifconfig wlan0 up
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed '
    expect_chip_address 02:AA:22:33:44:55
}

scenario_broadcom_requests_are_refused_one_by_one() {
    broadcom_world
    chip 'cur_etheraddr error=5'
    chip 'bus:loopback error=16'
    run_tool -u -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1' 'Test case 4 fail # 1'
    expect_out '[WIFI]##### ioctl Failed to send driver #####'
    expect_out '[WIFI]##### Failed to set loopback mode to driver #####'
    expect_loopback_parameter 0
    [ ! -e /root/WIFIAddr ] || fail "there is an address file"

    chip reset
    chip 'usb_lb_txfer error=110'
    run_tool -u -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 fail # 1'
    expect_out '[WIFI]Loopback Mode set to driver'
    expect_out '[WIFI]IOCTL fail for loopback'
    expect_loopback_parameter 1
}

scenario_broadcom_second_iteration_fails_alone() {
    broadcom_world
    chip 'usb_lb_txfer error=5 after=1'
    chip 'cur_etheraddr error=5 after=2'
    run_tool -l -M -m 2
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 fail # 1'
    expect_out '[WIFI]LOOPBACK SUCCESS' 1
    expect_out '[WIFI]MAC PRINT SUCCESS' 2
}

scenario_broadcom_chip_and_radio_pass_in_one_run() {
    broadcom_world
    passes_beside radio0
}

scenario_ctrl_c_ends_every_broadcom_request_that_sleeps() {
    broadcom_world
    signal_inside INT cur_etheraddr sleeps=1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    expect_loopback_parameter 0
    signal_inside INT bus:loopback sleeps=1
    expect_loopback_parameter 0
    # ^C writes the results and leaves the chip in loopback mode: kept.
    signal_inside INT usb_lb_txfer sleeps=1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    expect_loopback_parameter 1
}

scenario_a_kill_inside_every_broadcom_request_leaves_loopback_mode() {
    for request in cur_etheraddr bus:loopback usb_lb_txfer; do
        broadcom_world
        signal_inside TERM $request sleeps=1
        expect_no_result
        expect_out '[WIFI]Calling for chip --> 3'
        expect_out "[WIFI]Write to file \"$loopback_parameter\" success"
        expect_loopback_parameter 0
        unload_driver bcmdhd
        unplug_module
    done
}

scenario_ctrl_c_waits_for_a_broadcom_driver_that_lets_no_signal_in() {
    broadcom_world
    for request in cur_etheraddr bus:loopback usb_lb_txfer; do
        ctrl_c_waits_for_the_driver $request
    done
}

scenario_a_broadcom_driver_unloaded_between_two_iterations_fails_the_second() {
    begins_later=yes
    broadcom_world
    start_tool -l -M -m 3
    await_out 30 '[WIFI]LOOPBACK SUCCESS'
    unload_driver bcmdhd
    await_out 30 '[WIFI]### LOOPBACK FAIL ###'
    load_driver bcmdhd
    ifconfig wlan0 up
    finish_tool
    expect_result 'Test case 1 passed ' 'Test case 2 fail # 1' 'Test case 3 fail # 1' 'Test case 4 fail # 1'
    expect_out '[WIFI][401]IOCTL fail '
    expect_out '[WIFI]LOOPBACK SUCCESS' 2
}

scenario_a_blocked_broadcom_interface_still_answers_private_requests() {
    broadcom_world
    answers_while_its_interface_is_blocked
}

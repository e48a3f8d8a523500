# SPDX-License-Identifier: Apache-2.0
# The ath6kl chip: its registers in the debugfs of a real kernel. Its phy has no interface, so wlan0 is
# a radio.

ath6kl_world() {
    plug_chip ath6kl 0cf3:1022
}

scenario_ath6kl_chip_and_radio_pass_in_one_run() {
    ath6kl_world
    passes_beside wlan0
    expect_out '[WIFI]Chip type is = 1' 2
    expect_out '[WIFI]mac_addr is 02:0a:f5:12:34:56 and its length is 17' 2
    expect_chip_address 02:0a:f5:12:34:56
}

scenario_ath6kl_requests_arrive_as_they_were_made() {
    ath6kl_world
    run_tool -l -M -m 1
    expect_requests <<'END'
request reg_addr 0x28000
  result 0
request reg_dump
  result 0
request reg_addr 0x28004
  result 0
request reg_dump
  result 0
request aow 0x2
  result 0
request aow 0x3
  result 0
request reg_addr 0x40bf38
  result 0
request reg_dump
  result 0
request reg_addr 0x40bf34
  result 0
request reg_dump
  result 0
END
}

# The flow shows the counters and does not judge them: kept.
scenario_ath6kl_loopback_passes_whatever_its_counters_say() {
    ath6kl_world
    chip 'reg_dump content=5 sequence=0xffffffff'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_out '0x40bf38: 0x00000005'
    expect_out '0x40bf34: 0xffffffff'
    chip 'aow error=5'
    chip 'reg_dump error=5'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_err_matching 'Input/output error' 4
}

scenario_ath6kl_address_differs_from_the_kernels() {
    ath6kl_world
    chip 'reg_dump first=0x33221100 second=0xffff5544'
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1'
    expect_out '[WIFI] prev_mac [02:0A:F5:12:34:56] curr_mac [00:11:22:33:44:55]'
    expect_out '[WIFI]Both addresses are not same...'
    expect_chip_address 00:11:22:33:44:55
}

# address_fails STATEMENT TEXT
address_fails() {
    chip "$1"
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1'
    expect_out "$2"
}

scenario_ath6kl_address_fails_when_a_register_does_not_answer() {
    ath6kl_world
    address_fails 'reg_addr error=5' \
        '[WIFI]Can not write to reg_addr file using echo command. Please check file access permissions.'
    chip reset
    address_fails 'reg_dump error=5 after=1' \
        '[WIFI]Can not read reg_dump file using cat command. Please check driver status.'
}

scenario_ath6kl_address_fails_by_a_dump_of_another_length() {
    ath6kl_world
    address_fails 'reg_dump text=0x28000: 0x3322110' \
        '[WIFI]buf2 is 0x28000: 0x3322110 and its length is 18'
    address_fails 'reg_dump text=0x028000: 0x33221100' \
        '[WIFI]buf2 is 0x028000: 0x33221100 and its length is 20'
    address_fails 'reg_dump text=-' '[WIFI]buf2 is - and its length is 1'
    chip 'reg_dump text=whatever..:12f50a02'
    run_tool -M -m 1
    expect_out '[WIFI]buf2 is whatever..:12f50a02 and its length is 19' 2
}

# debugfs lists the newest phy first, and the tool takes the first.
scenario_a_newer_radio_hides_the_ath6kl_chip() {
    plug_module 0cf3:1022
    modprobe -r mac80211_hwsim
    load_driver ath6kl
    modprobe mac80211_hwsim radios=1 support_p2p_device=0
    ifconfig wlan0 up
    run_tool -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1' 'Test case 4 passed '
    expect_requests </dev/null
}

scenario_ath6kl_driver_unloaded_between_two_iterations() {
    begins_later=yes
    ath6kl_world
    start_tool -l -M -m 3
    await_out 30 '[WIFI]LOOPBACK SUCCESS'
    unload_driver ath6kl
    await_out 30 '[WIFI]LOOPBACK SUCCESS' 2
    load_driver ath6kl
    finish_tool
    # The other phys have no such files: the address cannot be read, the loopback does not mind.
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1' 'Test case 4 passed '
}

scenario_ctrl_c_ends_every_ath6kl_request_that_sleeps() {
    ath6kl_world
    for request in reg_addr reg_dump aow; do
        signal_inside INT $request sleeps=1
        expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' \
            'Test case 4 passed '
    done
}

# The tool's command stays with the driver when only the tool is killed.
scenario_a_kill_ends_the_tool_inside_every_ath6kl_request() {
    ath6kl_world
    for request in reg_addr reg_dump aow; do
        chip "$request sleeps=1"
        start_inside $request -l -M -m 3
        kill -TERM "$tool"
        finish_tool 10
        expect_out '[WIFI]WiFi Vendor is QCA 11n. Nothing to do.'
        expect_no_result
        chip reset
    done
}

# SPDX-License-Identifier: Apache-2.0
# The QCA combo chips: private wireless requests and target memory, through a real kernel.

combo_world() {
    plug_chip qca_combo 0cf3:9378
}

scenario_combo_loopback_and_address_pass() {
    combo_world
    run_tool -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    expect_out '[WIFI]Chip type is = 2'
    expect_order '[WIFI]MAC from kernel ioctl :- 02:0A:F5:12:34:56' \
        '[WIFI] prev_mac [02:0A:F5:12:34:56] curr_mac [02:0a:f5:12:34:56]' '[WIFI]MAC PRINT SUCCESS' \
        '[WIFI]Command number for getusbcontx loopback command is 56 which is 20-th private ioctl for wlan0 interface.' \
        '[WIFI]Buffer is total 100 seq_err 0 content_err 0' '[WIFI]Loopback Successful ' \
        '[WIFI]LOOPBACK SUCCESS'
    expect_chip_address 02:0a:f5:12:34:56
}

# The kernel hands the driver the tool's pointer, length and flags; of the name nothing is left.
scenario_combo_requests_arrive_as_they_were_made() {
    combo_world
    run_tool -l -M -m 1
    pointer='** ** ** **'
    [ "$(uname -m)" = armv7l ] || pointer="$pointer ** ** ** **"
    padding=
    [ "$(uname -m)" = armv7l ] || padding=' 00 00 00 00'
    expect_requests <<END
request memory 0x18000 4
  result 4
request memory 0x18004 4
  result 4
request command
  point $pointer 00 00 38 00$padding
  result 0
END
}

scenario_combo_loopback_fails_by_its_counters() {
    combo_world
    for counters in lost=1 damaged=1 packets=0 'text=loopback is busy'; do
        chip "getusbcontx $counters"
        run_tool -l -m 1
        expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 fail # 1'
        expect_out '[WIFI]Please check driver status...'
    done
}

# passes_with_table ENTRIES PLACE, fails_with_table STATEMENT TEXT
passes_with_table() {
    chip "table entries=$1 at=$2"
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_out "[WIFI]Command number for getusbcontx loopback command is 56 which is $2-th private ioctl for wlan0 interface."
}

fails_with_table() {
    chip "table $1"
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 fail # 1'
    expect_out "$2"
}

# The kernel refuses a table that is too small with E2BIG and does not say how large it must be.
scenario_combo_table_is_found_by_doubling_up_to_512_entries() {
    combo_world
    passes_with_table 16 15
    passes_with_table 17 16
    passes_with_table 512 511
    fails_with_table 'entries=513 at=1' '[WIFI]No private ioctl is for wlan0 interface...'
}

scenario_combo_loopback_fails_without_its_entry() {
    combo_world
    fails_with_table 'entries=0' '[WIFI]No private ioctl is for wlan0 interface...'
    fails_with_table 'entries=20 at=20' '[WIFI]Could not find loopback ioctl command number ...'
    fails_with_table 'number=57' '[WIFI]Could not find loopback ioctl command number ...'
    fails_with_table 'text=getusbcont' '[WIFI]Could not find loopback ioctl command number ...'
    # A longer name that begins so is as good.
    chip 'table text=getusbcontx2'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
}

scenario_combo_loopback_is_refused() {
    combo_world
    chip 'getusbcontx error=5'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 fail # 1'
    expect_order '[WIFI]Error in sending loopback ioctl to driver...' \
        '[WIFI]Not Able to send ioctl command  for loopback on wlan0 interface...'
    expect_out_matching '^\[WIFI\]ioctl\[SIOCDEVPRIVATE\]: Input/output error '
}

# The kernel copies 2,047 bytes at most, and hands the driver's length on as it is.
scenario_combo_answers_are_cut_at_2047_bytes_whatever_length_is_reported() {
    combo_world
    for length in 'filled=2047' 'filled=3000' 'filled=2047 claims=60000'; do
        chip "getusbcontx $length"
        run_tool -l -m 1
        expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
        answer=$(sed -n 's/^\[WIFI\]Buffer is //p' "$here/stdout")
        [ ${#answer} -eq 2047 ] || fail "an answer of ${#answer} characters"
    done
    chip 'getusbcontx claims=9'
    run_tool -l -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 4 passed '
    expect_out '[WIFI]Buffer is total 100'
}

scenario_combo_address_differs_from_the_kernels() {
    combo_world
    chip 'athdiagpfs first=0x33221100 second=0xffff5544'
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 fail # 1'
    expect_out '[WIFI] prev_mac [02:0A:F5:12:34:56] curr_mac [00:11:22:33:44:55]'
    expect_out '[WIFI]Both addresses are not same...'
    expect_chip_address 00:11:22:33:44:55
}

scenario_combo_memory_may_come_in_short_pieces() {
    combo_world
    chip 'athdiagpfs short=3'
    run_tool -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed '
    expect_chip_address 02:0a:f5:12:34:56
    expect_requests <<'END'
request memory 0x18000 4
  result 3
request memory 0x18003 1
  result 1
request memory 0x18004 4
  result 3
request memory 0x18007 1
  result 1
END
}

# A word that cannot be read ends the run at once, without results: kept.
stops_at() {
    chip "athdiagpfs $1"
    start_tool -M -m 2
    until_true 20 process_is_gone "$tool" || fail "the tool is still running"
    wait "$tool"
    status=$?
    [ "$status" -eq 1 ] || fail "the tool ended with status $status"
    expect_err "[WIFI]err ReadTargetRange failed ($2)."
    expect_no_result
}

scenario_combo_memory_that_cannot_be_read_stops_the_run() {
    combo_world
    stops_at 'error=5' 'nbyte=-1, address=0x18000 remaining=4'
    stops_at 'error=5 after=1' 'nbyte=-1, address=0x18004 remaining=4'
    stops_at 'end=0x18000' 'nbyte=0, address=0x18000 remaining=4'
    stops_at 'end=0x18006' 'nbyte=0, address=0x18006 remaining=2'
}

# The driver waits with its unloading for the read that it is in, and knows no second one.
scenario_combo_driver_unloaded_inside_a_read_stops_the_run() {
    combo_world
    chip 'athdiagpfs late=3000'
    start_inside athdiagpfs -M -m 2
    unload_driver qca_combo
    until_true 20 process_is_gone "$tool" || fail "the tool is still running"
    expect_err '[WIFI]err ReadTargetRange failed (nbyte=-1, address=0x18004 remaining=4).'
    expect_no_result
}

scenario_combo_driver_unloaded_between_two_iterations_fails_the_second() {
    begins_later=yes
    combo_world
    start_tool -l -M -m 3
    await_out 30 '[WIFI]LOOPBACK SUCCESS'
    unload_driver qca_combo
    await_out 30 '[WIFI]### LOOPBACK FAIL ###'
    load_driver qca_combo
    ifconfig wlan0 up
    finish_tool
    expect_result 'Test case 1 passed ' 'Test case 2 fail # 1' 'Test case 3 fail # 1' 'Test case 4 fail # 1'
    expect_out '[WIFI]No private ioctl is for wlan0 interface...' 1
    expect_out '[WIFI]LOOPBACK SUCCESS' 2
}

scenario_combo_chip_and_radio_pass_in_one_run() {
    combo_world
    passes_beside radio0
}

scenario_ctrl_c_ends_every_combo_request_that_sleeps() {
    combo_world
    for request in athdiagpfs getusbcontx; do
        signal_inside INT $request sleeps=1
        expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    done
}

scenario_a_kill_ends_every_combo_request_that_sleeps() {
    combo_world
    for request in athdiagpfs getusbcontx; do
        signal_inside TERM $request sleeps=1
        expect_out '[WIFI]WiFi Vendor is QCA 11n. Nothing to do.'
        expect_no_result
    done
}

scenario_ctrl_c_waits_for_a_combo_driver_that_lets_no_signal_in() {
    combo_world
    for request in athdiagpfs getusbcontx; do
        ctrl_c_waits_for_the_driver $request
    done
}

scenario_a_blocked_combo_interface_still_answers_private_requests() {
    combo_world
    answers_while_its_interface_is_blocked
}

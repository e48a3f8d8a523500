# SPDX-License-Identifier: Apache-2.0
# The supplicant daemon: missing, killed, interrupted.

supplicant_world() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
}

scenario_no_supplicant_is_recorded_twice() {
    supplicant_world
    ifconfig wlan0 up
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 fail # 2'
    expect_out '[WIFI]Unable to open sockets!!'
    expect_err 'unable to open sockets'
}

scenario_a_supplicant_killed_during_traffic_fails_the_disconnection() {
    supplicant_world
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    start_tool -w -m 2
    await_out 60 'Command to udhcpc is successful...'
    sleep 3
    stop_daemon supplicant KILL
    finish_tool
    expect_err 'Run Iperf Successful...' 1
    expect_err 'DISABLE_NETWORK Command is  not successful'
    expect_err 'Fail to send command DISABLE_NETWORK!!!'
    expect_err 'unable to open sockets' 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 fail # 3'
}

scenario_ctrl_c_during_traffic_writes_the_results() {
    supplicant_world
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    start_tool -w -m 3
    await_out 60 'Command to udhcpc is successful...'
    sleep 3
    press_ctrl_c
    finish_tool 10
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_order '[WIFI] Got ^C. Writing results to file before quitting.Please hold on...' \
        '[WIFI]ResultFile: /root/WIFIResult Updated' '[WIFI] Before resultFile.flush call ' \
        '[WIFI]Cleanup' '[WIFI] Done..'
    expect_no_client_sockets
}

scenario_ctrl_c_while_waiting_for_the_connection_writes_the_results() {
    supplicant_world
    configure 'go_passphrase=not the pass phrase'
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    start_tool -w -m 1
    await_out 60 'Result of cmd_to_setnetwork function is 0'
    sleep 2
    press_ctrl_c
    finish_tool 10
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_no_client_sockets
}

scenario_a_kill_writes_no_result_file() {
    supplicant_world
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    start_tool -w -m 3
    await_out 60 'Call to SELECT_NETWORK is Successful...'
    kill -TERM "$tool"
    finish_tool 10
    expect_order '[WIFI] Got Kill signal...' '[WIFI]Calling for chip --> 3' '[WIFI]Cleanup' '[WIFI] Done..'
    expect_err '[WIFI]Open error: No such file or directory'
    expect_no_result
    expect_no_client_sockets
}

# SPDX-License-Identifier: Apache-2.0
# The station and its access point: what the air, the pass phrase and the security settings do.

station_world() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
}

access_point() {
    start_access_point home wlan1 "$1"
    start_services home wlan1 192.168.77.1
}

scenario_three_iterations_pass_over_wpa2() {
    station_world
    access_point "$(wpa2 'Factory Line 7' 'correct horse battery')"
    run_tool -w -m 3
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_out '[WIFI]Chip type is = 3' 3
    expect_out 'Call to DISABLE_NETWORK is successful...' 3
    expect_err 'Run Iperf Successful...' 3
    expect_out_matching '^\[ *1\] 0\.0000-[1-9][0-9]\.[0-9]+ sec +[0-9.]+ [KM]Bytes +[0-9.]+ [KM]bits/sec$' 3
    expect_order '[WIFI]MODULE CONNECTED' '[WIFI]WIFI DRIVER READY' 'Scan Command Sent Successfully...' \
        'Factory Line 7is found...' 'Scan_Results Command Sent Successfully...' \
        'Call to ADD_NETWORK is Successful...' 'Result of cmd_to_setnetwork function is 0' \
        'Call to SELECT_NETWORK is Successful...' 'Executing dhclient...' 'udhcpc -i wlan0 --now.' \
        'Command to udhcpc is successful...' 'DISABLE_NETWORK 0 ' \
        'Call to DISABLE_NETWORK is successful...' '[WIFI]ResultFile: /root/WIFIResult Updated'
    expect_network_field proto RSN
    expect_network_field key_mgmt WPA-PSK
    expect_network_field pairwise CCMP
    expect_status 'wpa_state=INACTIVE'
    expect_log home.hostapd 'AP-STA-DISCONNECTED 02:00:00:00:00:00'
    expect_no_client_sockets
}

scenario_a_mixed_access_point_is_joined_as_wpa2() {
    station_world
    configure check_iperf=no
    access_point "$(mixed 'Factory Line 7' 'correct horse battery')"
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_log supplicant 'PTK=CCMP GTK=TKIP'
    expect_network_field proto RSN
    expect_network_field key_mgmt WPA-PSK
    expect_network_field pairwise 'CCMP TKIP'
}

scenario_a_wpa_access_point_is_joined_with_tkip() {
    station_world
    configure check_iperf=no
    access_point "$(wpa 'Factory Line 7' 'correct horse battery')"
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_log supplicant 'PTK=TKIP GTK=TKIP'
    expect_network_field proto WPA
    expect_network_field key_mgmt WPA-PSK
    expect_network_field pairwise TKIP
}

scenario_an_open_access_point_is_refused_for_its_empty_proto() {
    station_world
    access_point "$(unsecured 'Factory Line 7')"
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 fail # 1'
    expect_err 'SET_NETWORK Command for proto is not successful' 1
    expect_out 'Result of cmd_to_setnetwork function is 19'
    expect_out 'ERROR:SET_NETWORK COMMAND FAILED'
    expect_network_field auth_alg OPEN
}

scenario_a_wrong_pass_phrase_fails_the_selection() {
    station_world
    configure 'go_passphrase=not the pass phrase'
    access_point "$(wpa2 'Factory Line 7' 'correct horse battery')"
    run_tool -u -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 fail # 1'
    expect_err 'Unable to Connect Time out!!!'
    expect_out 'ERROR:SELECT_NETWORK COMMAND FAILED'
    expect_out_matching 'CTRL-EVENT-SSID-TEMP-DISABLED .*reason=WRONG_KEY'
}

scenario_no_access_point_fails_the_lookup() {
    station_world
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 fail # 1'
    expect_out 'Factory Line 7is not found!!!'
    expect_out 'Fail to send Scan_Results Command!!!'
}

scenario_an_access_point_that_goes_away_fails_the_next_iteration() {
    station_world
    configure check_iperf=no
    access_point "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_tool -w -m 2
    await_out 60 'Call to DISABLE_NETWORK is successful...'
    stop_daemon home.hostapd
    finish_tool
    # A scan goes on listing an access point for some time after its last beacon.
    expect_out 'Factory Line 7is found...' 2
    expect_err 'Unable to Connect Time out!!!' 1
    expect_out 'ERROR:SELECT_NETWORK COMMAND FAILED' 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 fail # 1'
}

scenario_an_access_point_lost_after_the_connection_costs_only_the_address() {
    station_world
    configure check_iperf=no
    access_point "$(wpa2 'Factory Line 7' 'correct horse battery')"
    stop_daemon home.udhcpd
    start_tool -w -m 1
    await_out 60 'Call to SELECT_NETWORK is Successful...'
    stop_daemon home.hostapd KILL
    finish_tool
    # No step but DHCP needs the access point now: its loss has told the wait for the disconnection.
    expect_err 'Fail to run dhclient!!!'
    expect_out 'ERROR:UDHCHPC START FAILED'
    expect_log supplicant 'CTRL-EVENT-BEACON-LOSS'
    expect_log supplicant 'CTRL-EVENT-DISCONNECTED bssid=02:00:00:00:01:00 reason=4 locally_generated=1'
    expect_out 'Call to DISABLE_NETWORK is successful...'
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
}

# SPDX-License-Identifier: Apache-2.0
# Wi-Fi Direct with a peer: a second supplicant with a radio of its own, driven by a script.
# The peer's part in each scenario is written down as the steps that it follows.

device=02:00:00:00:00:00
peer=02:00:00:00:01:00

p2p_world() {
    plug_module 0a5c:bd27
    configure "p2p_target_device_mac=$peer" dhcpd_conf=/run/device.udhcpd "$@"
    dhcp_server_settings device wlan0 192.168.77.1 >/run/device.udhcpd
    make_room peer wlan1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    start_supplicant peer wlan1 /run/peer peer
}

# The peer follows the steps on standard input, a here-document (a pipe would make it somebody else's
# child, which finish_daemon cannot wait for).
peer_follows() {
    cat >/run/peer.steps
    start_daemon peer.steps sh -c 'exec control-script /run/peer/wlan1 </run/peer.steps'
}

# The peer takes one of the addresses that the device leases.
peer_takes_an_address() {
    in_room peer udhcpc -i wlan1 -n -q -t 15 >"$logs/peer.udhcpc" 2>&1 || fail "no address for the peer"
    in_room peer ifconfig wlan1 | grep -qE 'inet addr:192\.168\.77\.(5[0-9]|60) ' ||
        fail "the peer's address is not one of the device's"
}

# The peer owns a persistent group and lets in whoever asks by push button: ITERATIONS.
join_a_persistent_group() {
    p2p_world
    peer_follows <<END_OF_STEPS
send P2P_GROUP_ADD persistent freq=2412
expect OK
wait 30 P2P-GROUP-STARTED
repeat $1
    wait 120 P2P-PROV-DISC-PBC-REQ $device
    send WPS_PBC
    expect OK
    wait 120 AP-STA-CONNECTED $device
    wait 120 AP-STA-DISCONNECTED $device
end
END_OF_STEPS
    await_log peer.steps 30 P2P-GROUP-STARTED
    start_services peer wlan1 192.168.77.1
    start_tool -c -m "$1"
    finish_tool $(($1 * 150))
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 9 passed '
    finish_daemon peer.steps 60
    expect_out "P2P_CONNECT $peer pbc join persistent" "$1"
    expect_out 'client Connected...' "$1"
    expect_out 'Command to udhcpc is successful...' "$1"
    expect_err 'Run Iperf Successful...' "$1"
    expect_out_matching '^\[ *1\] 0\.0000-[1-9][0-9]\.[0-9]+ sec +[0-9.]+ [KM]Bytes +[0-9.]+ [KM]bits/sec$' "$1"
    expect_out 'Waiting for P2P-GROUP-REMOVED event from peer.' "$1"
    expect_status 'wpa_state=DISCONNECTED'
}

scenario_three_iterations_join_a_persistent_group() {
    join_a_persistent_group 3
}

long_scenario_ten_iterations_join_a_persistent_group() {
    join_a_persistent_group 10
}

# The peer asks first; its request ends the wait for one. That wait has 15 seconds, a search of the air
# has no such limit: so the two have met before, and the peer asks as soon as the device waits for it.
scenario_the_device_becomes_the_owner_by_its_go_intent() {
    p2p_world starting_go_intent=15
    ask_supplicant P2P_LISTEN
    peer_follows <<END_OF_STEPS
send P2P_FIND
expect OK
wait 120 P2P-DEVICE-FOUND $device
END_OF_STEPS
    finish_daemon peer.steps 130
    start_tool -d -m 1
    await_out_matching 90 "seconds waiting for go negotiation request from $peer"
    peer_follows <<END_OF_STEPS
send P2P_CONNECT $device pbc go_intent=0
expect OK
wait 120 P2P-GROUP-STARTED wlan1 client
wait 120 P2P-GROUP-REMOVED
END_OF_STEPS
    await_log peer.steps 150 'P2P-GROUP-STARTED wlan1 client'
    peer_takes_an_address
    finish_tool
    finish_daemon peer.steps 30
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 6 passed '
    expect_out "P2P_CONNECT $peer pbc  go_intent=15"
    expect_no_out 'Didnot receive a P2P-GO-NEG-REQUEST'
    expect_order '[WIFI]Testing for client' '[WIFI]Testing for GO' GO 'ifconfig wlan0 192.168.77.1'
}

# The device asks first; the peer answers a request that it sees and ends the group that it owns.
scenario_the_device_becomes_the_client_by_its_go_intent() {
    p2p_world starting_go_intent=0
    start_services peer wlan1 192.168.77.1
    peer_follows <<END_OF_STEPS
send P2P_LISTEN
expect OK
wait 120 P2P-GO-NEG-REQUEST $device
send P2P_CONNECT $device pbc go_intent=15
expect OK
wait 120 P2P-GROUP-STARTED wlan1 GO
wait 120 AP-STA-CONNECTED $device
END_OF_STEPS
    start_tool -u -d -m 1
    await_out 150 'Waiting for P2P-GROUP-REMOVED event from peer.'
    finish_daemon peer.steps 30
    echo 'send P2P_GROUP_REMOVE wlan1' | control-script /run/peer/wlan1
    finish_tool
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 6 passed '
    expect_out "P2P_CONNECT $peer pbc  go_intent=0"
    expect_out 'Didnot receive a P2P-GO-NEG-REQUEST.Sending a connect request.'
    expect_order client 'udhcpc -i wlan0 --now.' 'Command to udhcpc is successful...' \
        'Waiting for P2P-GROUP-REMOVED event from peer.' \
        '<3>P2P-GROUP-REMOVED wlan0 client reason=GO_ENDING_SESSION'
}

scenario_the_supplicant_refuses_a_group_with_a_name() {
    p2p_world
    run_tool -g -m 1
    expect_err 'unable to start p2p group Factory Line 7 ' 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 7 passed '
}

# The steps by which the peer joins the device's group.
join_steps() {
    cat <<END_OF_STEPS
send P2P_FIND
expect OK
wait 120 P2P-DEVICE-FOUND $device
send P2P_CONNECT $device pbc join
expect OK
wait 120 P2P-GROUP-STARTED wlan1 client ssid="DIRECT-wx Line 7"
END_OF_STEPS
}

# The go-between makes the supplicant one that knows the command.
scenario_clients_of_the_autonomous_group_are_served_and_counted() {
    p2p_world 'go_ssid=DIRECT-wx Line 7' ctrl_iface=/run/go-between
    start_go_between wlan0 /run/go-between /var/run/wpa_supplicant
    start_tool -g -m 1
    await_out_matching 60 'P2P group started DIRECT-wx Line 7 $'
    await_out 60 'Server listening on TCP port 5001'
    peer_follows <<END_OF_STEPS
$(join_steps)
END_OF_STEPS
    finish_daemon peer.steps 240
    await_out 30 'Client connected 1.'
    peer_takes_an_address
    in_room peer iperf -c 192.168.77.1 -t 3 >"$logs/peer.iperf" 2>&1
    expect_out_matching '^\[ *[0-9]+\] 0\.0000-[0-9.]+ sec +[1-9][0-9.]* [KM]Bytes +[0-9.]+ [KM]bits/sec$'

    peer_follows <<END_OF_STEPS
send P2P_GROUP_REMOVE wlan1
expect OK
wait 30 P2P-GROUP-REMOVED
$(join_steps)
END_OF_STEPS
    finish_daemon peer.steps 240
    await_out 30 'Client connected 2.'
    press_ctrl_c
    finish_tool 20
    expect_log go-between 'P2P_GROUP_ADD persistent=0: OK'
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 7 passed '
}

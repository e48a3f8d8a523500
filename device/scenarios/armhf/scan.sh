# SPDX-License-Identifier: Apache-2.0
# The scan through the kernel: names on the air, and the access points followed from run to run.

scan_world() {
    plug_module 0a5c:bd27
    make_room hall wlan1
}

# A further network of the same access point, for its settings lines: INTERFACE SETTINGS.
further_network() {
    printf 'bss=%s\n%s\n' "$1" "$2"
}

named() {
    printf 'ssid2="%s"\n' "$1"
}

# A hidden network answers no scan, it is heard by its beacons alone: they come so often (15.36 ms)
# that one falls into the time for which the device listens on the channel.
every_kind_of_name() {
    echo beacon_int=15
    named 'Line 7 A'
    further_network hidden "$(printf '%s\nignore_broadcast_ssid=1' "$(named 'Line 7 hidden')")"
    further_network blanks "$(named ' Line 7 B ')"
    further_network accents "$(named 'Línea 7')"
    further_network long "$(named 'Line 7 with 32 bytes in its name')"
    further_network slash "$(named 'Line 7 C\D')"
}

# The listing holds this access point: ADDRESS NAME.
expect_listed() {
    awk -v address="BSS $1 " -v name="$(printf '\tSSID: ')" '
        $0 == address { getline signal; getline ssid
            if (signal ~ /^\tsignal: -[0-9]+\.-?[0-9][0-9] dBm$/) print substr(ssid, length(name) + 1) }
        ' /tmp/output >"$here/listed"
    printf '%s\n' "$2" | cmp -s - "$here/listed" || {
        sed 's/^/#   /' /tmp/output
        fail "not listed: $1 $2"
    }
}

expect_status_file() {
    sed 's/-[0-9]*\.-*[0-9][0-9]/SIGNAL/' /tmp/ap_status.txt | sort >"$here/statuses"
    printf '%s\n' "$@" | cmp -s - "$here/statuses" || {
        sed 's/^/#   /' /tmp/ap_status.txt
        fail "the status file does not hold: $*"
    }
}

scenario_a_scan_lists_every_kind_of_name() {
    scan_world
    start_access_point hall wlan1 "$(every_kind_of_name)"
    run_tool -S -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 5 passed '
    expect_out '[WIFI]Number of APs founds are 6'
    expect_out '[WIFI]No ssid defined for check'
    expect_out '[WIFI]SCAN SUCCESS'
    expect_listed 02:00:00:00:01:00 'Line 7 A'
    expect_listed 02:00:00:00:01:01 ''
    expect_listed 02:00:00:00:01:02 '\x20Line 7 B\x20'
    expect_listed 02:00:00:00:01:03 'L\xc3\xadnea 7'
    expect_listed 02:00:00:00:01:04 'Line 7 with 32 bytes in its name'
    expect_listed 02:00:00:00:01:05 'Line 7 C\x5cD'
    [ "$(wc -l </tmp/output)" -eq 18 ] || fail "the listing holds more than the six networks"
}

scenario_the_status_file_follows_access_points_from_run_to_run() {
    scan_world
    make_room stopped wlan2
    make_room new wlan3
    start_access_point hall wlan1 "$(named 'Line 7 A'; further_network other "$(named 'Office')")"
    start_access_point stopped wlan2 "$(named 'Line 7 B')"
    run_tool '-SLine 7' -m 1
    expect_out '[WIFI]APs found with matching prefix are 2'
    expect_status_file '02:00:00:00:01:00/SIGNAL/0/Line 7 A' '02:00:00:00:02:00/SIGNAL/0/Line 7 B'

    stop_daemon stopped.hostapd
    start_access_point new wlan3 "$(named 'Line 7 C')"
    sleep 31 # so long the kernel goes on listing what it does not hear any more
    run_tool '-SLine 7' -m 1
    expect_out '[WIFI]APs found with matching prefix are 2'
    expect_status_file '02:00:00:00:01:00/SIGNAL/0/Line 7 A' '02:00:00:00:02:00//1/Line 7 B' \
        '02:00:00:00:03:00/SIGNAL/0/Line 7 C'

    run_tool '-SLine 7' -o dbus -m 1
    expect_status_file '02:00:00:00:01:00/SIGNAL/0/Line 7 A' '02:00:00:00:03:00/SIGNAL/0/Line 7 C'
}

scenario_a_scan_works_beside_the_supplicant() {
    scan_world
    start_access_point hall wlan1 "$(named 'Line 7 A')"
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    run_tool '-SLine 7' -m 2
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 5 passed '
    expect_out '[WIFI]Scan is done.' 2
    # The table is never emptied: the second iteration finds the one access point twice.
    expect_order '[WIFI]APs found with matching prefix are 1' '[WIFI]APs found with matching prefix are 2'
    expect_status_file '02:00:00:00:01:00/SIGNAL/0/Line 7 A'
    expect_status 'wpa_state=DISCONNECTED'
}

scenario_an_empty_air_is_a_shielded_room() {
    scan_world
    run_tool -S -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 5 passed '
    expect_out '[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM'
    expect_status_file '//3/'
}

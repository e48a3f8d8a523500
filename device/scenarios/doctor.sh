# SPDX-License-Identifier: Apache-2.0
# wivex-doctor against real counterparts: what it calls good passes, what it names comes.

doctor_world() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
}

# doctor STATUS OPTIONS...  asks it, and keeps what it says for the run that follows.
doctor() {
    expected=$1
    shift
    wivex-doctor "$@" >"$here/doctor" 2>&1
    status=$?
    [ "$status" -eq "$expected" ] || fail "the doctor ended with $status: $(cat "$here/doctor")"
}

# It foretold something, which the end of the run has then been held against.
expect_something_foretold() {
    [ -s "$here/foretold" ] || fail 'the doctor foretold nothing'
}

scenario_the_doctor_finds_a_good_device_ready() {
    doctor_world
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    doctor 0 --scan -w
    grep -q '^good  *air  *"Factory Line 7" is ' "$here/doctor" || fail 'the access point was not heard'
    run_tool -w -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_no_client_sockets
}

scenario_the_doctor_foretells_a_missing_supplicant() {
    doctor_world
    ifconfig wlan0 up
    doctor 1 -w
    run_tool -w -m 1
    expect_something_foretold
}

scenario_the_doctor_foretells_a_missing_module_and_a_short_pass_phrase() {
    doctor_world
    configure 'usbdevlist=/sys/kernel/debug/usb/none'
    configure 'go_passphrase=short'
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    doctor 1 -w
    run_tool -w -m 1
    expect_something_foretold
}

# SPDX-License-Identifier: Apache-2.0
# What a driver in a real kernel gives back, byte by byte. tools/test-device compares it with what the
# simulated driver of the rehearsal bench gives back to the same program.

comes_back() {
    chip "$2"
    program=ask-driver
    run_tool "$1"
    [ -s "$here/stdout" ] || fail "nothing came back"
}

scenario_requests_for_variables_come_back() {
    plug_chip bcmdhd 0a5c:bd27
    echo 1 >/sys/module/bcmdhd/parameters/usbloop_enable
    comes_back variables 'usb_lb_txfer error=5 after=1'
}

scenario_requests_for_commands_come_back() {
    plug_chip qca_combo 0cf3:9378
    comes_back commands 'getusbcontx claims=33 error=5 after=2'
}

scenario_a_request_for_a_long_command_comes_back() {
    plug_chip qca_combo 0cf3:9378
    comes_back long-command 'getusbcontx claims=3000'
}

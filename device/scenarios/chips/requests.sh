# SPDX-License-Identifier: Apache-2.0
# What the drivers in a real kernel give back, byte by byte, to requests that the tool makes and to some
# that it never makes: as it was recorded. The rehearsal bench's simulated driver must give the same.

# comes_back WHAT STATEMENT
comes_back() {
    chip "$2"
    program=ask-driver
    run_tool "$1"
    width=64-bit
    ! tool_is_32_bit || width=32-bit
    diff "/device/scenarios/chips/recorded/$width/$1" "$here/stdout" ||
        fail "something else came back than was recorded"
}

scenario_requests_for_variables_come_back_as_recorded() {
    plug_chip bcmdhd 0a5c:bd27
    echo 1 >/sys/module/bcmdhd/parameters/usbloop_enable
    comes_back variables 'usb_lb_txfer error=5 after=1'
}

scenario_requests_for_commands_come_back_as_recorded() {
    plug_chip qca_combo 0cf3:9378
    comes_back commands 'getusbcontx claims=33 error=5 after=2'
}

scenario_a_request_for_a_long_command_comes_back_as_recorded() {
    plug_chip qca_combo 0cf3:9378
    comes_back long-command 'getusbcontx claims=3000'
}

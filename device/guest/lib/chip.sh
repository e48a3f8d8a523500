# SPDX-License-Identifier: Apache-2.0
# Sourced: the chips, whose drivers are the modules of device/kernel. Needs basics.sh and world.sh.

chip_files=/sys/kernel/debug/chip

# plug_chip FAMILY VENDOR:PRODUCT  the module on the bus and its driver: bcmdhd, qca_combo or ath6kl.
# The interface of the first two is wlan0, so the radio that had this name becomes radio0. The last
# has none: the radio stays wlan0 and takes the chip's address.
plug_chip() {
    plug_module "$2"
    [ ! -e /sys/class/net/wlan0 ] || ifconfig wlan0 down
    if [ "$1" = ath6kl ]; then
        ifconfig wlan0 hw ether 02:0a:f5:12:34:56
    elif [ ! -e /sys/class/net/radio0 ]; then
        ip link set wlan0 name radio0 || fail "the radio keeps its name"
    fi
    load_driver "$1"
    ifconfig wlan0 up
}

load_driver() {
    modprobe cfg80211
    insmod "/device/drivers/$1.ko" || fail "the driver cannot be loaded: $1"
}

# unload_driver NAME  waits for those who are inside.
unload_driver() {
    until_true 10 rmmod "$1" 2>/dev/null || fail "the driver stays: $1"
}

unload_drivers() {
    [ ! -e "$chip_files/control" ] || echo reset >"$chip_files/control"
    for driver in bcmdhd qca_combo ath6kl; do
        [ ! -e "/sys/module/$driver" ] || unload_driver "$driver"
    done
}

# chip STATEMENT  says what the chip holds and how it misbehaves, as device/kernel/chip.h tells.
chip() {
    echo "$1" >"$chip_files/control" || fail "not understood by the driver: $1"
}

# await_request NAME  until such a request has arrived at the driver.
await_request() {
    until_true 30 grep -q "^request $1" "$chip_files/requests" || fail "no request arrived: $1"
}

# expect_requests  what arrived at the driver since it was loaded is exactly standard input.
expect_requests() {
    cat >"$here/expected-requests"
    cp "$chip_files/requests" "$here/requests"
    cmp -s "$here/expected-requests" "$here/requests" && return
    sed 's/^/#   /' "$here/requests"
    fail "these requests arrived at the driver, and no others were expected"
}

# tool_is_32_bit  by the fifth byte of its file.
tool_is_32_bit() {
    [ "$(dd if="/usr/bin/$program" bs=1 skip=4 count=1 2>/dev/null)" = "$(printf '\001')" ]
}

# A chip whose driver sleeps on REQUEST until a signal comes: sleeping_in REQUEST OPTIONS...
# starts the tool and returns when it is inside.
sleeping_in() {
    chip "$1 sleeps=1"
    start_inside "$@"
}

# start_inside REQUEST OPTIONS...  starts the tool, and returns when it has come to this request.
start_inside() {
    inside=$1
    shift
    start_tool "$@"
    until_true 30 grep -q "^  inside $inside\$" "$chip_files/requests" || fail "the tool never asks for $inside"
}


expect_chip_address() {
    [ "$(cat /root/WIFIAddr)" = "$1" ] || fail "the address file holds: $(cat /root/WIFIAddr)"
}

# What every chip whose interface is wlan0 must come through; a scenario has plugged it.

# passes_beside RADIO  the radio does the legacy test in the same run.
passes_beside() {
    configure "interface_name=$1" check_iperf=no
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
    start_supplicant supplicant "$1" /var/run/wpa_supplicant
    run_tool -l -M -w -m 2
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed ' \
        'Test case 8 passed '
    expect_out '[WIFI]LOOPBACK SUCCESS' 2
}

# signal_inside SIGNAL REQUEST WORD  the signal comes while the driver is in this request; the run
# ends soon.
signal_inside() {
    chip "$2 $3"
    start_inside "$2" -l -M -m 3
    kill "-$1" -- "-$tool"
    finish_tool 10
    chip reset
}

# ctrl_c_waits_for_the_driver REQUEST  a driver that lets no signal in delays the end of the run until
# it returns.
ctrl_c_waits_for_the_driver() {
    chip "$1 late=4000"
    start_inside "$1" -l -M -m 3
    read -r began _ </proc/uptime
    press_ctrl_c
    usleep 500000
    ! process_is_gone "$tool" || fail "the tool has ended before the driver returned"
    finish_tool 10
    read -r ended _ </proc/uptime
    [ $((${ended%.*} - ${began%.*})) -ge 3 ] || fail "the driver was not waited for"
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    chip reset
}

# As a radio that is blocked by a switch (ERFKILL): the interface cannot come up.
answers_while_its_interface_is_blocked() {
    [ ! -e /sys/class/net/wlan0 ] || ifconfig wlan0 down
    chip 'open error=132'
    run_tool -l -M -m 1
    expect_result 'Test case 1 passed ' 'Test case 2 fail # 1' 'Test case 3 passed ' 'Test case 4 passed '
    expect_err_matching '^ifconfig: SIOCSIFFLAGS: '
}

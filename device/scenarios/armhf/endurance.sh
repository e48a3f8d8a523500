# SPDX-License-Identifier: Apache-2.0
# 1,000 iterations: nothing grows, in the tool or in the kernel, and the kernel has nothing to say.

# a_thousand_pass FAMILY MODULE  both checks of a chip, again and again.
a_thousand_pass() {
    plug_chip "$1" "$2"
    dmesg >"$here/kernel-before"
    start_tool -l -M -m 1000
    sleep 120
    measure early
    sleep 1800
    measure late
    wait "$tool" || fail "the tool ended with status $?"
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 3 passed ' 'Test case 4 passed '
    expect_out '[WIFI]LOOPBACK SUCCESS' 1000
    expect_out '[WIFI]MAC PRINT SUCCESS' 1000
    expect_no_growth
    dmesg | cmp -s - "$here/kernel-before" || fail "the kernel has something to say: $(dmesg | tail -n 3)"
}

# measure NAME  descriptors and memory of the tool, memory of the kernel; sizes in kB.
measure() {
    {
        echo "descriptors $(find "/proc/$tool/fd" -type l | wc -l)"
        awk '/^Vm(RSS|Data)/ { print $1, $2 }' "/proc/$tool/status"
        awk '/^(SUnreclaim|VmallocUsed)/ { print $1, $2 }' /proc/meminfo
    } >"$here/$1"
}

# Pages come and go a few at a time; between the two lie 900 iterations, so a leak of 80 bytes each shows.
expect_no_growth() {
    paste "$here/early" "$here/late" >"$here/growth"
    cat "$here/growth"
    awk '{ allowed = $1 ~ /^descriptors|^VmData/ ? 0 : 64 }
         NF != 4 || $4 - $2 > allowed { print "# grew: " $0; grown = 1 }
         END { exit grown || NR != 5 }' "$here/growth" || fail "something has grown"
}

scenario_a_thousand_broadcom_iterations_leave_nothing_behind() {
    a_thousand_pass bcmdhd 0a5c:bd27
}

scenario_a_thousand_combo_iterations_leave_nothing_behind() {
    a_thousand_pass qca_combo 0cf3:9378
}

long_scenario_a_thousand_ath6kl_iterations_leave_nothing_behind() {
    a_thousand_pass ath6kl 0cf3:1022
}

# SPDX-License-Identifier: Apache-2.0
# What the tool needs of a small device: little memory, and as one file nothing else at all.

factory_line() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
}

# The peak only grows, so the last figure before the end is that of the run. No program is started for it:
# that would cost more than the run.
watch_peak_memory() {
    while read_peak; do
        short_pause
    done
    echo "$peak" >"$here/peak-kilobytes"
}

# False when there is no such figure any more.
read_peak() {
    while read -r name value _; do
        [ "$name" != VmHWM: ] || { peak=$value && return; }
    done <"/proc/$tool/status"
    return 1
}

expect_peak_memory() {
    peak=$(cat "$here/peak-kilobytes")
    echo "peak resident memory: $peak kB"
    [ "$peak" -gt 100 ] || fail "no figure of the run's memory: $peak"
    [ "$peak" -le "$1" ] || fail "the run needed $peak kB, more than $1"
}

expect_a_pass() {
    expect_result 'Test case 1 passed ' 'Test case 2 passed ' 'Test case 8 passed '
    expect_err 'Run Iperf Successful...' 2
}

scenario_a_run_needs_at_most_four_mebibytes() {
    factory_line
    start_tool -u -w -m 2
    watch_peak_memory
    finish_tool
    expect_a_pass
    expect_peak_memory 4096
}

scenario_one_file_without_dependencies_passes_as_well() {
    factory_line
    program=wivex-static
    start_tool -u -w -m 2
    watch_peak_memory
    finish_tool
    expect_a_pass
    expect_peak_memory 4096
}

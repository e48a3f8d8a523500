# SPDX-License-Identifier: Apache-2.0
# The recipe of a station that reaches the device over a serial console, on which the kernel speaks as well.

scenario_a_station_reports_over_the_serial_console() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    serve_serial_port secret
    start_daemon kernel-noise sh -c \
        'while sleep 1; do echo "<2>usb 1-1: a word of the kernel" >/dev/kmsg; done'
    attended serial
}

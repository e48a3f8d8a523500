# SPDX-License-Identifier: Apache-2.0
# The recipes of a station: the tool runs here, and the report is made on the host.

recipe_world() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
}

scenario_a_station_reports_through_ssh() {
    recipe_world
    serve_ssh
    attended ssh
}

scenario_a_station_reports_over_the_serial_console() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    serve_serial_port secret
    start_daemon kernel-noise sh -c \
        'while sleep 1; do echo "<2>usb 1-1: a word of the kernel" >/dev/kmsg; done'
    attended serial
}

# SPDX-License-Identifier: Apache-2.0
# The recipe of a station that reaches the device through ssh: the tool runs here, and the report is made there.

scenario_a_station_reports_through_ssh() {
    plug_module 0a5c:bd27
    make_room home wlan1
    start_access_point home wlan1 "$(wpa2 'Factory Line 7' 'correct horse battery')"
    start_services home wlan1 192.168.77.1
    start_supplicant supplicant wlan0 /var/run/wpa_supplicant
    serve_ssh
    attended ssh
}

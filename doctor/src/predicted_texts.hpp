// SPDX-License-Identifier: Apache-2.0
// What the tool prints of a failure, as far as a run with other values prints the same. A bad point
// names the text that the run will show.
#pragma once

namespace wivex::doctor::predicted {

inline constexpr const char* configuration_problem = "[WIFI]Configuration file problem.Plese check";
inline constexpr const char* unknown_key = "[WIFI]Unknown key value pair..";
inline constexpr const char* module_absent = "[WIFI]ERROR:Module not inserted.";
inline constexpr const char* driver_absent = "[WIFI]ERROR:WiFi driver is not insmoded properly";
inline constexpr const char* interface_down = "[WIFI]ERROR:WiFi network interface not up";
inline constexpr const char* softap_problem = "[WIFI]ERROR:create softAP problem";
inline constexpr const char* not_found = "is not found!!!";
inline constexpr const char* no_connection = "Unable to Connect Time out!!!";
inline constexpr const char* psk_refused = "SET_NETWORK Command for psk is not successful";
inline constexpr const char* group_refused = "unable to start p2p group";
inline constexpr const char* peer_missing = "error in config file: missing target mac address";
inline constexpr const char* peer_not_found = "P2P FIND: TIME OUT !!";
inline constexpr const char* connect_refused = "connect:TEST CASE FAIL";
inline constexpr const char* scan_refused = "ERROR:SCAN-FAIL";
inline constexpr const char* open_network = "SET_NETWORK Command for proto is not successful";
inline constexpr const char* cannot_open = "[WIFI]Unable to open sockets!!";
inline constexpr const char* cannot_attach = "[WIFI]Unable to attach event socket!!";
inline constexpr const char* find_refused = "Failed to send P2P_FIND command to wpa_supplicant";
inline constexpr const char* scan_fails = "[WIFI]do_scan_trigger() failed with";
inline constexpr const char* no_address = "Fail to run dhclient!!!";
inline constexpr const char* no_interface = "[WIFI][401]IOCTL fail";
inline constexpr const char* loopback_fails = "[WIFI]### LOOPBACK FAIL ###";
inline constexpr const char* mac_fails = "[WIFI]MAC PRINT FAIL";
inline constexpr const char* not_supported = "[WIFI]LOOPBACK is not supported for this chip";
inline constexpr const char* addresses_differ = "[WIFI]Both addresses are not same...";
inline constexpr const char* no_private_requests =
    "[WIFI]No private ioctl is for wlan0 interface...";
inline constexpr const char* no_phy = "phy_addr is NULL";
inline constexpr const char* no_register_files = "[WIFI]Can not write to reg_addr";
inline constexpr const char* no_register_dump = "[WIFI]Can not read reg_dump";
inline constexpr const char* no_loopback_request = "[WIFI]Not Able to find ioctl command";
inline constexpr const char* no_diag_device = "err firmware_mac_address_qca_combo failed";
inline constexpr const char* no_debugfs = "Debugfs Mount Error";

} // namespace wivex::doctor::predicted

// SPDX-License-Identifier: Apache-2.0
#include "console_texts.hpp"

#include <array>

namespace wivex::report {

namespace {

constexpr auto whole = Shape::whole;
constexpr auto begins = Shape::begins;
constexpr auto open = Shape::open;
constexpr auto ends = Shape::ends;
constexpr auto inside = Shape::inside;

constexpr auto no_cause = Cause::none;
constexpr auto legacy = Mode::legacy;
constexpr auto device = Mode::device;
constexpr auto client = Mode::client;
constexpr auto go = Mode::go;

// Columns: shape, text, sign, phase, cause, mode.
constexpr auto texts = std::to_array<TextRow>({
    // Start
    {begins, "[WIFI]WIVEX", Sign::run_begins},
    {begins, "[WIFI]This build is compiled on ", Sign::starting},
    {begins, "[WIFI]Wivex Version ", Sign::not_started},
    {begins, "Usage: wivex ", Sign::not_started},
    {begins, "[WIFI]'m' parameter passed without value or 0", Sign::single_iteration},
    {begins, "[WIFI]Reading Conf file: ", Sign::config_path},
    {begins, "[WIFI]Configuration file problem", Sign::not_started},
    {begins, "[WIFI]Unknown key value pair.."},
    {begins, "skipping key = ", Sign::unknown_key},
    {ends, " characters, the rest is skipped"},
    {begins, "[WIFI]Pushing PIDs"},
    {begins, "[WIFI]pid array size "},
    {whole, "[WIFI]USBFS is already Mounted"},
    {whole, "[WIFI]USBFS is Mounted"},

    // Module and driver
    {begins, "[WIFI]Chip type is = ", Sign::chip_type, Phase::module},
    {begins, "[WIFI]Chip vendor id = ", Sign::chip_ids, Phase::module},
    {begins, "ERROR:Unable to open file "},
    {whole, "[WIFI]MODULE CONNECTED", Sign::pass, Phase::module},
    {begins, "[WIFI]ERROR:Module not inserted.", Sign::fail, Phase::module, Cause::module_absent},
    {begins, "[WIFI]check usbfs: ", Sign::module_hint, Phase::module, Cause::module_absent},
    {whole, "[WIFI]WIFI DRIVER READY", Sign::pass, Phase::driver},
    {begins, "[WIFI]ERROR:WiFi driver is not insmoded properly", Sign::fail, Phase::driver,
     Cause::driver_absent},
    {begins, "[WIFI]ERROR:WiFi network interface not up", Sign::fail, Phase::driver,
     Cause::interface_down},

    // MAC address
    {begins, "[WIFI]Result file direcotry is ", Sign::enter, Phase::mac},
    {begins, "[WIFI]MAC address output file ", Sign::enter, Phase::mac},
    {begins, "[WIFI]MAC from kernel ioctl :- ", Sign::mac_kernel, Phase::mac},
    {begins, "[WIFI]MAC address from wl ioctl :-  ", Sign::mac_chip, Phase::mac},
    {begins, "[WIFI]fw_mac_addr is ", Sign::mac_chip, Phase::mac},
    {begins, "[WIFI] prev_mac [", Sign::mac_pair, Phase::mac},
    {begins, "[WIFI]mac_addr is ", Sign::enter, Phase::mac},
    {begins, "[WIFI][401]IOCTL fail", Sign::enter, Phase::mac},
    {begins, "[WIFI]##### ioctl Failed to send driver", Sign::enter, Phase::mac},
    {begins, "[WIFI]Both addresses are not same", Sign::enter, Phase::mac},
    {begins, "File not able to write"},
    {whole, "[WIFI]MAC PRINT SUCCESS", Sign::pass, Phase::mac},
    {whole, "[WIFI]MAC PRINT FAIL", Sign::fail, Phase::mac, Cause::mac_differs},
    {begins, "[WIFI]err ReadTargetRange failed", Sign::fail, Phase::mac, Cause::diag_read},
    {begins, "[WIFI]err firmware_mac_address_qca_combo failed", Sign::enter, Phase::mac},
    {begins, "[WIFI]DIAG Read Word ", Sign::enter, Phase::mac},
    {begins, "[WIFI]Value in target at ", Sign::enter, Phase::mac},
    {begins, "[WIFI]echo /proc/cld/athdiagpfs failed", Sign::enter, Phase::mac},
    {begins, "[WIFI]buf is "},
    {begins, "[WIFI]buf2 is "},
    {begins, "[WIFI]Call to system("},
    {begins, "[WIFI]Can not write to reg_addr file"},
    {begins, "[WIFI]Can not read reg_dump file"},
    {begins, "[WIFI]Can not read temporary file properly"},
    {begins, "[WIFI]Can not remove temp_file"},
    {begins, "[WIFI]Content of file can't be stored in buffer"},
    {begins, "[WIFI]File temp_file"},
    {begins, "[WIFI]phy_addr is "},
    {begins, "[WIFI]Cannot open file "},
    {begins, "[WIFI]readdir_r returns NULL"},
    {begins, "readdir_r: "},

    // Loopback
    {begins, "[WIFI]VID "},
    {begins, "[WIFI]Actual PID "},
    {whole, "[WIFI]PIDs:"},
    {begins, "[WIFI]Failed to create the socket"},
    {begins, "[WIFI]##### Failed to set loopback mode", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Loopback Mode set to driver", Sign::enter, Phase::loopback},
    {begins, "[WIFI]IOCTL fail for loopback", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Loopback fail, status ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]===> Loopback Test Passed Successfully ", Sign::loopback_status,
     Phase::loopback},
    {begins, "[WIFI]Current module : vid = ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]LOOPBACK is not supported for this chip", Sign::enter, Phase::loopback},
    {begins, "[WIFI] Loopback about to start", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Cannot create socket and gets file descriptor"},
    {begins, "[WIFI]No private ioctl is for ", Sign::enter, Phase::loopback},
    {begins, "get_priv_ioctls: memory reallocation failed"},
    {begins, "[WIFI]Command number for ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Could not find loopback ioctl command number", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Correct loopback ioctl command number detected", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Error in sending loopback ioctl to driver", Sign::enter, Phase::loopback},
    {begins, "[WIFI]ioctl[SIOCDEVPRIVATE]: ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Sending loopback request using ioctl", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Sending command for loopback is successful but", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Please check driver status"},
    {begins, "[WIFI]Buffer is ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]total_packets [", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Loopback Successful", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Not Able to find ioctl command", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Not Able to send ioctl command", Sign::enter, Phase::loopback},
    {begins, "[WIFI][Trying to Mount Debugfs for Wi-Fi]", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Debugfs Mount Error : ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Debugfs is Mounted", Sign::enter, Phase::loopback},
    {begins, "[WIFI]path = "},
    {begins, "[WIFI]echo "},
    {begins, "[WIFI]cat "},
    {begins, "[WIFI]buf="},
    {begins, "[WIFI]val1="},
    {begins, "[WIFI]File Error : ", Sign::enter, Phase::loopback},
    {begins, "[WIFI]Unable to start shell: ", Sign::enter, Phase::loopback},
    {begins, "[WIFI][QCA Wi-Fi Content Error Count]", Sign::enter, Phase::loopback},
    {begins, "[WIFI][QCA Wi-Fi Seq Error Count]", Sign::enter, Phase::loopback},
    {whole, "[WIFI]LOOPBACK SUCCESS", Sign::pass, Phase::loopback},
    {begins, "[WIFI]### LOOPBACK FAIL ###", Sign::fail, Phase::loopback, Cause::loopback_failed},

    // Supplicant session
    {begins, "[WIFI]Unable to open sockets!!", Sign::session_trouble, Phase::session},
    {begins, "[WIFI]Unable to attach event socket!!", Sign::session_trouble, Phase::session},
    {whole, "unable to open sockets", Sign::fail, Phase::session, Cause::session_not_open},
    {begins, "Invalid sockets..Trying to open them again.", Sign::enter, Phase::session},
    {begins, "Unable to open sockets..quitting", Sign::fail, Phase::session, Cause::session_lost},
    {begins, "error in config file: missing target mac address", Sign::fail, Phase::session,
     Cause::target_missing},
    {begins, "Unable to check wlan staus.", Sign::enter, Phase::session},
    {begins, "Sockets are not opened"},
    {begins, "wlan0 status ", Sign::enter, Phase::session, no_cause, go},
    {begins, "p2p0 status ", Sign::enter, Phase::session, no_cause, go},
    {begins, "[WIFI]fcntl(ctrl->s, O_NONBLOCK)"},
    {begins, "[WIFI]Here at "},
    {begins, "Value of sigterm_var is ", Sign::connection_closed},
    {begins, "In parse event : Device "},

    // Legacy WLAN
    {open, "Scan returning FAIL-BUSY", Sign::enter, Phase::scan, no_cause, legacy},
    {begins, "Scan Command not successful", Sign::enter, Phase::scan, no_cause, legacy},
    {begins, "scan event receive failure", Sign::enter, Phase::scan, no_cause, legacy},
    {begins, "Scan Command Sent Successfully", Sign::enter, Phase::scan, no_cause, legacy},
    {begins, "Fail to send Scan Command!!!", Sign::enter, Phase::scan, no_cause, legacy},
    {whole, "ERROR:SCAN FAIL-BUSY", Sign::fail, Phase::scan, Cause::scan_busy, legacy},
    {whole, "ERROR:SCAN-FAIL", Sign::fail, Phase::scan, Cause::scan_rejected, legacy},
    {begins, "scan_results Command not successful", Sign::enter, Phase::scan, no_cause, legacy},
    {ends, "is found...", Sign::enter, Phase::scan, no_cause, legacy},
    {ends, "is not found!!!", Sign::enter, Phase::scan, no_cause, legacy},
    {begins, "Fail to send Scan_Results Command!!!", Sign::fail, Phase::scan,
     Cause::network_not_found, legacy},
    {begins, "Scan_Results Command Sent Successfully", Sign::pass, Phase::scan, no_cause, legacy},
    {begins, "REMOVE_NETWORK Command is ", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Fail to Create Command "},
    {begins, "ADD_NETWORK Command not successful", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Fail to receive Network Id", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Call to ADD_NETWORK is Successful", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Fail to send Command ADD_NETWORK!!!", Sign::enter, Phase::associate, no_cause,
     legacy},
    {begins, "ERROR:ADD_NETWORK COMMAND FAILED", Sign::fail, Phase::associate,
     Cause::network_not_added, legacy},
    {begins, "SET_NETWORK Command for ", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Result of cmd_to_setnetwork function is ", Sign::enter, Phase::associate, no_cause,
     legacy},
    {begins, "ERROR:SET_NETWORK COMMAND FAILED", Sign::fail, Phase::associate,
     Cause::network_not_set, legacy},
    {begins, "SELECT_NETWORK Command is ", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Unable to Connect Time out!!!", Sign::enter, Phase::associate, no_cause, legacy},
    {begins, "Call to SELECT_NETWORK is Successful", Sign::pass, Phase::associate, no_cause,
     legacy},
    {begins, "Fail to send Command SELECT_NETWORK !!!", Sign::enter, Phase::associate, no_cause,
     legacy},
    {begins, "ERROR:SELECT_NETWORK COMMAND FAILED", Sign::fail, Phase::associate,
     Cause::network_not_selected, legacy},
    {begins, "ERROR:UDHCHPC START FAILED", Sign::warn, Phase::dhcp, Cause::dhcp_client, legacy},
    {begins, "DISABLE_NETWORK Command is ", Sign::enter, Phase::disconnect, no_cause, legacy},
    {begins, "DISABLE_NETWORK ", Sign::enter, Phase::disconnect, no_cause, legacy},
    {begins, "Timeout waiting for CTRL-EVENT-DISCONNECTED event", Sign::enter, Phase::disconnect,
     no_cause, legacy},
    {begins, "Fail to send command DISABLE_NETWORK!!!", Sign::fail, Phase::disconnect,
     Cause::network_not_disabled, legacy},
    {begins, "Call to DISABLE_NETWORK is successful", Sign::mode_passed, Phase::disconnect,
     no_cause, legacy},

    // Addresses and traffic, in several modes
    {begins, "Executing dhclient...", Sign::enter, Phase::dhcp},
    {begins, "udhcpc -i ", Sign::enter, Phase::dhcp},
    {begins, "udhcpc: lease of ", Sign::own_address, Phase::dhcp},
    {begins, "Fail to run dhclient!!!", Sign::enter, Phase::dhcp},
    // Whether this ends the test is the mode's: the legacy mode goes on.
    {begins, "Fail to start udhcpc!!!", Sign::fail, Phase::dhcp, Cause::dhcp_client},
    {begins, "Command to udhcpc is successful", Sign::pass, Phase::dhcp},
    {begins, "IPERF not set in conf. file!!"},
    {begins, "Unable to run Iperf in Client mode!!!", Sign::fail, Phase::traffic,
     Cause::iperf_client},
    {begins, "Run Iperf Successful", Sign::iperf_done, Phase::traffic},
    {begins, "Unable to assign ip to ", Sign::fail, Phase::group, Cause::address_not_set},
    {begins, "Unable to start dhcpd", Sign::fail, Phase::group, Cause::dhcp_server},

    {begins, "ifconfig "},
    {begins, "killall udhcpd;sleep 1; "},

    // Wi-Fi Direct
    {begins, "Sent P2P_LISTEN "},
    {begins, "listen_device_P2P fail"},
    {begins, "search_device_P2P fail"},
    {begins, "stop_search_device_P2P fail"},
    {begins, "FAILED:P2P_LISTEN"},
    {begins, "SUCCESS:P2P_LISTEN"},
    {open, "Failed to send P2P_LISTEN command to wpa_supplicant"},
    {begins, "Sent P2P_GROUP_REMOVE ", Sign::group_removed},
    {open, "Failed to send P2P_GROUP_REMOVE command to wpa_supplicant", Sign::group_removed},
    {open, "Failed to send P2P_FLUSH command to wpa_supplicant"},
    {open, "Failed to send P2P_STOP_FIND command to wpa_supplicant"},
    {open, "Failed to send P2P_GROUP_ADD command to wpa_supplicant"},
    {begins, "Sent P2P_FIND ", Sign::enter, Phase::find},
    {whole, "SUCCESS:P2P_FIND", Sign::enter, Phase::find},
    {whole, "FAILED:P2P_FIND", Sign::enter, Phase::find},
    {begins, "Failed to send P2P_FIND command to wpa_supplicant", Sign::enter, Phase::find},
    {begins, "P2P FIND: TIME OUT !!", Sign::enter, Phase::find},
    {begins, "MATCH FOUND!!!", Sign::peer_found},
    {begins, "P2P FIND Fail", Sign::fail, Phase::find, Cause::peer_not_found, device},
    {begins, "P2P FIND FAIL", Sign::fail, Phase::find, Cause::peer_not_found, client},
    {begins, "P2P_CONNECT ", Sign::enter, Phase::negotiate},
    {begins, "SentP2P_CONNECT ", Sign::enter, Phase::negotiate, no_cause, client},
    {begins, "Sent P2P_CONNECT ", Sign::enter, Phase::negotiate, no_cause, device},
    {open, "Failed to send P2P_CONNECT command to wpa_supplicant", Sign::enter, Phase::negotiate},
    {open, "Peer address is NULL!!", Sign::enter, Phase::negotiate},
    {whole, "---------------------------------------------------", Sign::enter, Phase::find,
     no_cause, device},
    {inside, " seconds waiting for go negotiation request from ", Sign::enter, Phase::negotiate,
     no_cause, device},
    {begins, "Didnot receive a P2P-GO-NEG-REQUEST.", Sign::enter, Phase::negotiate, no_cause,
     device},
    {begins, "connect:TEST CASE FAIL", Sign::fail, Phase::negotiate, Cause::not_connected, device},
    {begins, "[WIFI]Testing for ", Sign::enter, Phase::group, no_cause, device},
    {whole, "GO", Sign::role_owner, Phase::group},
    {whole, "client", Sign::role_client, Phase::group},
    {begins, "Unable to recieve P2P-GROUP-STARTED event.", Sign::fail, Phase::group,
     Cause::no_group_started, device},
    {begins, "Waiting for P2P-GROUP-REMOVED event from peer.", Sign::mode_passed, Phase::removal},
    {begins, "CONNECT:TEST CASE FAIL", Sign::fail, Phase::negotiate, Cause::not_connected, client},
    {begins, "client Connected...", Sign::pass, Phase::negotiate, no_cause, client},
    {begins, "disconnect:TEST CASE FAIL", Sign::fail, Phase::removal, Cause::group_not_removed,
     client},
    {begins, "unable to start p2p group ", Sign::fail, Phase::group, Cause::group_not_added, go},
    {begins, "Unable to get P2P-GROUP-STARTED event.", Sign::fail, Phase::group,
     Cause::group_not_added, go},
    {begins, "P2P_GROUP_ADD ssid=", Sign::enter, Phase::group, no_cause, go},
    {begins, "P2P group started ", Sign::group_started, Phase::group, no_cause, go},
    {begins, "Unable to start iperf server.", Sign::fail, Phase::group, Cause::iperf_server, go},
    {begins, "unable to send   WPS_PBC", Sign::enter, Phase::serve, no_cause, go},
    {begins, "Client connected ", Sign::client_connected, Phase::serve, no_cause, go},
    {begins, "Client not able to connect...continuing", Sign::warn, Phase::serve,
     Cause::client_not_connected, go},

    // nl80211 scan
    {whole, "[WIFI]SCAN STARTED", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]First time dump ", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]File: "},
    {begins, "[WIFI]Should not happend ", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]Failed to allocate netlink socket.", Sign::enter, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]do_scan_trigger() failed with ", Sign::enter, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]\"/tmp/output\"File open error", Sign::enter, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]\"/tmp/output\"File write error", Sign::enter, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]nlmsg_alloc failed", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]nl_send_auto_complete failed from "},
    {begins, "[WIFI]NL80211_CMD_GET_SCAN sent ", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]NL80211_CMD_TRIGGER_SCAN sent ", Sign::enter, Phase::scan, no_cause,
     Mode::scan},
    {begins, "ERROR: nl_recvmsgs_default() returned "},
    {begins, "ERROR: NL80211_CMD_", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "ERROR: Failed to allocate netlink ", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]Waiting for scan to complete..."},
    {begins, "[WIFI]ERROR: nl_recvmsgs() returned "},
    {begins, "[WIFI]ERROR: Kernel aborted scan."},
    {begins, "[WIFI]Scan is done."},
    {begins, "[WIFI]Got NL80211_CMD_"},
    {begins, "[WIFI]error_handler() called."},
    {begins, "[WIFI]Number of scan APs coming more than "},
    {begins, "[WIFI]bss info missing!"},
    {begins, "[WIFI]failed to parse nested attributes!"},
    {begins, "[WIFI]Number of APs founds are ", Sign::access_point_count, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]No ssid defined for check", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "SSIDS CURRENTLY AVAILABLE"},
    {begins, "[WIFI]ssid prefix define for check=", Sign::prefix, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]More than 50 AP coming with matching prefix"},
    {begins, "[WIFI]APs found with matching prefix are ", Sign::match_count, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]AP with prefix not found", Sign::warn, Phase::scan, Cause::prefix_not_found,
     Mode::scan},
    {begins, "[WIFI]AP scan result dump to file ", Sign::enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]not able to open file"},
    {whole, "[WIFI]SCAN SUCCESS", Sign::pass, Phase::scan, no_cause, Mode::scan},
    {whole, "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM", Sign::warn, Phase::scan,
     Cause::listing_empty, Mode::scan},
    {whole, "[WIFI]SCAN FAIL", Sign::fail, Phase::scan, Cause::scan_failed, Mode::scan},

    // Ends
    {begins, "[WIFI]softAP created successfuly.", Sign::softap_end, Phase::none, no_cause,
     Mode::softap},
    {begins, "[WIFI]ERROR:create softAP problem", Sign::softap_end, Phase::none, no_cause,
     Mode::softap},
    {begins, "[WIFI] Got ^C.", Sign::interrupted},
    {begins, "[WIFI] Got Kill signal...", Sign::killed},
    {begins, "[WIFI]Calling for chip --> ", Sign::killed},
    {begins, "[WIFI]Open error"},
    {begins, "[WIFI]Write error"},
    {begins, "[WIFI]Write to file "},
    {begins, "[WIFI]WiFi Vendor is QCA 11n. Nothing to do."},
    {begins, "[WIFI]user file name is ", Sign::result_path},
    {open, "[WIFI]Unable to open Result File: ", Sign::result_unwritable},
    {begins, "[WIFI]ResultFile: ", Sign::result_written},
    {begins, "[WIFI]Unable to write Result File: ", Sign::results_lost},
    {begins, "[WIFI]Unable to write results", Sign::results_lost},
    {begins, "[WIFI]ERROR:run ended early: ", Sign::results_lost},
    {begins, "[WIFI]Out of memory", Sign::results_lost},
    {begins, "[WIFI] Before resultFile.flush call", Sign::after_interrupt},
    {begins, "[WIFI]resultFile.flush() called", Sign::after_interrupt},
    {whole, "[WIFI]Cleanup", Sign::run_over},
    {begins, "[WIFI]Set value of sigterm_var"},
    {begins, "[WIFI]Closing the ctrl sockets"},
    {begins, "[WIFI]Closing the Event sockets"},
    {begins, "[WIFI]Reset Value of sigterm_var", Sign::cleaned_up},
    {begins, "[WIFI] Done..", Sign::done},
});

} // namespace

std::span<const TextRow> console_texts() {
    return texts;
}

bool told_on_standard_error(const TextRow& row) {
    switch (row.cause) {
    case Cause::session_not_open:
    case Cause::target_missing:
    case Cause::iperf_client:
    case Cause::network_not_disabled:
    case Cause::address_not_set:
    case Cause::dhcp_server:
    case Cause::no_group_started:
    case Cause::group_not_added:
    case Cause::iperf_server:
        return true;
    default:
        return row.sign == Sign::iperf_done || row.sign == Sign::unknown_key ||
               row.sign == Sign::result_unwritable;
    }
}

bool is_unmistakable(const TextRow& row) {
    switch (row.sign) {
    case Sign::own_address:
    case Sign::role_owner:
    case Sign::role_client:
        return false;
    case Sign::known:
        return row.text.starts_with(tool_prefix);
    default:
        return row.text.front() != '-';
    }
}

} // namespace wivex::report

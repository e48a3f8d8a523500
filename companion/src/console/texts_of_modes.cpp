// SPDX-License-Identifier: Apache-2.0
// Texts of the modes: the session, the steps of each mode, what several share.
#include "console/tells.hpp"
#include "console/text_tables.hpp"

#include <array>

namespace wivex::report {

namespace {

using namespace tells;

constexpr auto whole = Shape::whole;
constexpr auto begins = Shape::begins;
constexpr auto open = Shape::open;
constexpr auto ends = Shape::ends;
constexpr auto inside = Shape::inside;

constexpr auto no_cause = Cause::none;
constexpr auto any_mode = Mode::unknown;
constexpr auto legacy = Mode::legacy;
constexpr auto device = Mode::device;
constexpr auto client = Mode::client;
constexpr auto go = Mode::go;

// Columns: shape, text, what it tells, phase, cause, mode, trait.
constexpr auto texts = std::to_array<TextRow>({
    // Supplicant session
    {begins, "[WIFI]Unable to open sockets!!", session_trouble, Phase::session},
    {begins, "[WIFI]Unable to attach event socket!!", session_trouble, Phase::session},
    {whole, "unable to open sockets", fail, Phase::session, Cause::session_not_open},
    {begins, "Invalid sockets..Trying to open them again.", enter, Phase::session},
    {begins, "Unable to open sockets..quitting", fail, Phase::session, Cause::session_lost},
    {begins, "error in config file: missing target mac address", fail, Phase::session,
     Cause::target_missing},
    {begins, "Unable to check wlan staus.", enter, Phase::session},
    {begins, "Sockets are not opened"},
    {begins, "wlan0 status ", enter, Phase::session, no_cause, go},
    {begins, "p2p0 status ", enter, Phase::session, no_cause, go},
    {begins, "[WIFI]fcntl(ctrl->s, O_NONBLOCK)"},
    {begins, "[WIFI]Here at "},
    {begins, "Value of sigterm_var is ", connection_closed},
    {begins, "In parse event : Device "},

    // Legacy WLAN
    {open, "Scan returning FAIL-BUSY", enter, Phase::scan, no_cause, legacy},
    {begins, "Scan Command not successful", enter, Phase::scan, no_cause, legacy},
    {begins, "scan event receive failure", enter, Phase::scan, no_cause, legacy},
    {begins, "Scan Command Sent Successfully", enter, Phase::scan, no_cause, legacy},
    {begins, "Fail to send Scan Command!!!", enter, Phase::scan, no_cause, legacy},
    {whole, "ERROR:SCAN FAIL-BUSY", fail, Phase::scan, Cause::scan_busy, legacy},
    {whole, "ERROR:SCAN-FAIL", fail, Phase::scan, Cause::scan_rejected, legacy},
    {begins, "scan_results Command not successful", enter, Phase::scan, no_cause, legacy},
    {ends, "is found...", enter, Phase::scan, no_cause, legacy},
    {ends, "is not found!!!", enter, Phase::scan, no_cause, legacy},
    {begins, "Fail to send Scan_Results Command!!!", fail, Phase::scan, Cause::network_not_found,
     legacy},
    {begins, "Scan_Results Command Sent Successfully", pass, Phase::scan, no_cause, legacy},
    {begins, "REMOVE_NETWORK Command is ", enter, Phase::associate, no_cause, legacy},
    {begins, "Fail to Create Command "},
    {begins, "ADD_NETWORK Command not successful", enter, Phase::associate, no_cause, legacy},
    {begins, "Fail to receive Network Id", enter, Phase::associate, no_cause, legacy},
    {begins, "Call to ADD_NETWORK is Successful", enter, Phase::associate, no_cause, legacy},
    {begins, "Fail to send Command ADD_NETWORK!!!", enter, Phase::associate, no_cause, legacy},
    {begins, "ERROR:ADD_NETWORK COMMAND FAILED", fail, Phase::associate, Cause::network_not_added,
     legacy},
    {begins, "SET_NETWORK Command for ", enter, Phase::associate, no_cause, legacy},
    {begins, "Result of cmd_to_setnetwork function is ", enter, Phase::associate, no_cause, legacy},
    {begins, "ERROR:SET_NETWORK COMMAND FAILED", fail, Phase::associate, Cause::network_not_set,
     legacy},
    {begins, "SELECT_NETWORK Command is ", enter, Phase::associate, no_cause, legacy},
    {begins, "Unable to Connect Time out!!!", enter, Phase::associate, no_cause, legacy},
    {begins, "Call to SELECT_NETWORK is Successful", pass, Phase::associate, no_cause, legacy},
    {begins, "Fail to send Command SELECT_NETWORK !!!", enter, Phase::associate, no_cause, legacy},
    {begins, "ERROR:SELECT_NETWORK COMMAND FAILED", fail, Phase::associate,
     Cause::network_not_selected, legacy},
    {begins, "ERROR:UDHCHPC START FAILED", warn, Phase::dhcp, Cause::dhcp_client, legacy},
    {begins, "DISABLE_NETWORK Command is ", enter, Phase::disconnect, no_cause, legacy},
    {begins, "DISABLE_NETWORK ", enter, Phase::disconnect, no_cause, legacy},
    {begins, "Timeout waiting for CTRL-EVENT-DISCONNECTED event", enter, Phase::disconnect,
     no_cause, legacy},
    {begins, "Fail to send command DISABLE_NETWORK!!!", fail, Phase::disconnect,
     Cause::network_not_disabled, legacy},
    {begins, "Call to DISABLE_NETWORK is successful", mode_passed, Phase::disconnect, no_cause,
     legacy},

    // Addresses and traffic, in several modes
    {begins, "Executing dhclient...", enter, Phase::dhcp},
    {begins, "udhcpc -i ", enter, Phase::dhcp},
    {begins, "udhcpc: lease of ", own_address, Phase::none, no_cause, any_mode, Trait::anybodys},
    {begins, "Fail to run dhclient!!!", enter, Phase::dhcp},
    // Whether this ends the test is the mode's: the legacy mode goes on.
    {begins, "Fail to start udhcpc!!!", fail, Phase::dhcp, Cause::dhcp_client},
    {begins, "Command to udhcpc is successful", pass, Phase::dhcp},
    {begins, "IPERF not set in conf. file!!"},
    {begins, "Unable to run Iperf in Client mode!!!", fail, Phase::traffic, Cause::iperf_client},
    {begins, "Run Iperf Successful", iperf_done, Phase::traffic, no_cause, any_mode,
     Trait::on_standard_error},
    {begins, "Unable to assign ip to ", fail, Phase::group, Cause::address_not_set},
    {begins, "Unable to start dhcpd", fail, Phase::group, Cause::dhcp_server},

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
    {begins, "Sent P2P_GROUP_REMOVE ", group_removed},
    {open, "Failed to send P2P_GROUP_REMOVE command to wpa_supplicant", group_removed},
    {open, "Failed to send P2P_FLUSH command to wpa_supplicant"},
    {open, "Failed to send P2P_STOP_FIND command to wpa_supplicant"},
    {open, "Failed to send P2P_GROUP_ADD command to wpa_supplicant"},
    {begins, "Sent P2P_FIND ", enter, Phase::find},
    {whole, "SUCCESS:P2P_FIND", enter, Phase::find},
    {whole, "FAILED:P2P_FIND", enter, Phase::find},
    {begins, "Failed to send P2P_FIND command to wpa_supplicant", enter, Phase::find},
    {begins, "P2P FIND: TIME OUT !!", enter, Phase::find},
    {begins, "MATCH FOUND!!!", peer_found},
    {begins, "P2P FIND Fail", fail, Phase::find, Cause::peer_not_found, device},
    {begins, "P2P FIND FAIL", fail, Phase::find, Cause::peer_not_found, client},
    {begins, "P2P_CONNECT ", enter, Phase::negotiate},
    {begins, "SentP2P_CONNECT ", enter, Phase::negotiate, no_cause, client},
    {begins, "Sent P2P_CONNECT ", enter, Phase::negotiate, no_cause, device},
    {open, "Failed to send P2P_CONNECT command to wpa_supplicant", enter, Phase::negotiate},
    {open, "Peer address is NULL!!", enter, Phase::negotiate},
    {whole, "---------------------------------------------------", enter, Phase::find, no_cause,
     device},
    {inside, " seconds waiting for go negotiation request from ", enter, Phase::negotiate, no_cause,
     device},
    {begins, "Didnot receive a P2P-GO-NEG-REQUEST.", enter, Phase::negotiate, no_cause, device},
    {begins, "connect:TEST CASE FAIL", fail, Phase::negotiate, Cause::not_connected, device},
    {begins, "[WIFI]Testing for ", enter, Phase::group, no_cause, device},
    {whole, "GO", role_owner, Phase::group, no_cause, any_mode, Trait::anybodys},
    {whole, "client", role_client, Phase::group, no_cause, any_mode, Trait::anybodys},
    {begins, "Unable to recieve P2P-GROUP-STARTED event.", fail, Phase::group,
     Cause::no_group_started, device},
    {begins, "Waiting for P2P-GROUP-REMOVED event from peer.", mode_passed, Phase::removal},
    {begins, "CONNECT:TEST CASE FAIL", fail, Phase::negotiate, Cause::not_connected, client},
    {begins, "client Connected...", pass, Phase::negotiate, no_cause, client},
    {begins, "disconnect:TEST CASE FAIL", fail, Phase::removal, Cause::group_not_removed, client},
    {begins, "unable to start p2p group ", fail, Phase::group, Cause::group_not_added, go},
    {begins, "Unable to get P2P-GROUP-STARTED event.", fail, Phase::group, Cause::group_not_added,
     go},
    {begins, "P2P_GROUP_ADD ssid=", enter, Phase::group, no_cause, go},
    {begins, "P2P group started ", group_started, Phase::group, no_cause, go},
    {begins, "Unable to start iperf server.", fail, Phase::group, Cause::iperf_server, go},
    {begins, "unable to send   WPS_PBC", enter, Phase::serve, no_cause, go},
    {begins, "Client connected ", client_connected, Phase::serve, no_cause, go},
    {begins, "Client not able to connect...continuing", warn, Phase::serve,
     Cause::client_not_connected, go},

    // nl80211 scan
    {whole, "[WIFI]SCAN STARTED", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]First time dump ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]File: "},
    {begins, "[WIFI]Should not happend ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]Failed to allocate netlink socket.", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]do_scan_trigger() failed with ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]\"/tmp/output\"File open error", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]\"/tmp/output\"File write error", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]nlmsg_alloc failed", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]nl_send_auto_complete failed from "},
    {begins, "[WIFI]NL80211_CMD_GET_SCAN sent ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]NL80211_CMD_TRIGGER_SCAN sent ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "ERROR: nl_recvmsgs_default() returned "},
    {begins, "ERROR: NL80211_CMD_", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "ERROR: Failed to allocate netlink ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]Waiting for scan to complete..."},
    {begins, "[WIFI]ERROR: nl_recvmsgs() returned "},
    {begins, "[WIFI]ERROR: Kernel aborted scan."},
    {begins, "[WIFI]Scan is done."},
    {begins, "[WIFI]Got NL80211_CMD_"},
    {begins, "[WIFI]error_handler() called."},
    {begins, "[WIFI]Number of scan APs coming more than "},
    {begins, "[WIFI]bss info missing!"},
    {begins, "[WIFI]failed to parse nested attributes!"},
    {begins, "[WIFI]Number of APs founds are ", names_follow, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]No ssid defined for check", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "SSIDS CURRENTLY AVAILABLE"},
    {begins, "[WIFI]ssid prefix define for check=", matches_follow, Phase::scan, no_cause,
     Mode::scan},
    {begins, "[WIFI]More than 50 AP coming with matching prefix"},
    {begins, "[WIFI]APs found with matching prefix are ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]AP with prefix not found", warn, Phase::scan, Cause::prefix_not_found,
     Mode::scan},
    {begins, "[WIFI]AP scan result dump to file ", enter, Phase::scan, no_cause, Mode::scan},
    {begins, "[WIFI]not able to open file"},
    {whole, "[WIFI]SCAN SUCCESS", pass, Phase::scan, no_cause, Mode::scan},
    {whole, "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM", warn, Phase::scan, Cause::listing_empty,
     Mode::scan},
    {whole, "[WIFI]SCAN FAIL", fail, Phase::scan, Cause::scan_failed, Mode::scan},

});

} // namespace

std::span<const TextRow> texts_of_modes() {
    return texts;
}

} // namespace wivex::report

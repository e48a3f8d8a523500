// SPDX-License-Identifier: Apache-2.0
#include "model/causes.hpp"

#include <array>

namespace wivex::report {

namespace {

// Columns: cause, phase, id, words, code, test case.
constexpr std::array<CauseRow, cause_count> rows{{
    {Cause::module_absent, Phase::module, "module-absent", "module not on the bus", 1, 1},
    {Cause::driver_absent, Phase::driver, "driver-absent", "driver not loaded", 2, 2},
    {Cause::interface_down, Phase::driver, "interface-down", "network interface not up", 3, 2},
    {Cause::mac_differs, Phase::mac, "mac-check", "MAC address check failed", 4, 3},
    {Cause::loopback_failed, Phase::loopback, "loopback", "bus loopback failed", 5, 4},
    {Cause::scan_failed, Phase::scan, "scan-failed", "nl80211 scan failed", 7, 5},
    {Cause::session_not_open, Phase::session, "session-not-open", "supplicant could not be reached",
     6, 0},
    {Cause::session_lost, Phase::session, "session-lost",
     "connection to the supplicant lost and not reopened", 6, 0},
    {Cause::target_missing, Phase::session, "target-missing",
     "p2p_target_device_mac missing in the configuration", 16, 0},
    {Cause::scan_busy, Phase::scan, "scan-busy", "SCAN refused: busy", 24, 0},
    // Recorded under 21, not under the 8 that the mode returns.
    {Cause::scan_rejected, Phase::scan, "scan-rejected", "SCAN refused", 21, 0},
    {Cause::network_not_found, Phase::scan, "network-not-found",
     "access point not among the scan results", 9, 0},
    {Cause::network_not_added, Phase::associate, "network-not-added", "ADD_NETWORK failed", 9, 0},
    {Cause::network_not_set, Phase::associate, "network-not-set", "SET_NETWORK failed", 19, 0},
    {Cause::network_not_selected, Phase::associate, "network-not-selected",
     "SELECT_NETWORK failed or timed out", 19, 0},
    {Cause::iperf_client, Phase::traffic, "iperf-client", "iperf client could not be started", 14,
     0},
    {Cause::network_not_disabled, Phase::disconnect, "network-not-disabled",
     "DISABLE_NETWORK failed or timed out", 22, 0},
    {Cause::peer_not_found, Phase::find, "peer-not-found", "peer not found", 26, 0},
    {Cause::not_connected, Phase::negotiate, "not-connected", "P2P_CONNECT failed or timed out", 29,
     0},
    {Cause::address_not_set, Phase::group, "address-not-set", "static address not set", 12, 0},
    {Cause::dhcp_server, Phase::group, "dhcp-server", "DHCP server could not be started", 12, 0},
    {Cause::dhcp_client, Phase::dhcp, "dhcp-client", "no address by DHCP", 21, 0},
    {Cause::no_group_started, Phase::group, "no-group-started", "no P2P-GROUP-STARTED in time", 10,
     0},
    {Cause::group_not_added, Phase::group, "group-not-added", "P2P_GROUP_ADD failed or timed out",
     10, 0},
    {Cause::iperf_server, Phase::group, "iperf-server", "iperf server could not be started", 13, 0},
    {Cause::group_not_removed, Phase::removal, "group-not-removed", "P2P_GROUP_REMOVE failed", 32,
     0},
    {Cause::prefix_not_found, Phase::scan, "prefix-not-found",
     "no access point with the SSID prefix", 0, 0},
    {Cause::listing_empty, Phase::scan, "listing-empty", "scan listing empty", 0, 0},
    {Cause::client_not_connected, Phase::serve, "client-not-connected",
     "peer asked to join and did not connect", 0, 0},
    {Cause::no_traffic_figure, Phase::traffic, "no-traffic-figure",
     "iperf ran and gave no throughput", 0, 0},
    {Cause::diag_read, Phase::mac, "diag-read", "DIAG device gave no data: the tool ended itself",
     0, 0},

}};

consteval bool rows_stand_in_order() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (index_of(rows[i].cause) != i) {
            return false;
        }
    }
    return true;
}
static_assert(rows_stand_in_order());

} // namespace

const CauseRow& row_of(Cause cause) {
    return rows.at(index_of(cause) < cause_count ? index_of(cause) : 0);
}

} // namespace wivex::report

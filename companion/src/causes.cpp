// SPDX-License-Identifier: Apache-2.0
#include "causes.hpp"

namespace wivex::report {

namespace {

constexpr std::array<CauseRow, cause_count> rows{{
    {Cause::module_absent, Phase::module, "module-absent", "module not on the bus", 1, 1, {}},
    {Cause::driver_absent, Phase::driver, "driver-absent", "driver not loaded", 2, 2, {}},
    {Cause::interface_down, Phase::driver, "interface-down", "network interface not up", 3, 2, {}},
    {Cause::mac_differs, Phase::mac, "mac-check", "MAC address check failed", 4, 3, {}},
    {Cause::loopback_failed, Phase::loopback, "loopback", "bus loopback failed", 5, 4, {}},
    {Cause::scan_failed, Phase::scan, "scan-failed", "nl80211 scan failed", 7, 5, {}},
    // The legacy mode's list names this code twice, so that it counts twice there.
    {Cause::session_not_open,
     Phase::session,
     "session-not-open",
     "supplicant could not be reached",
     6,
     0,
     {2, 1, 1, 1}},
    {Cause::session_lost,
     Phase::session,
     "session-lost",
     "connection to the supplicant lost and not reopened",
     6,
     0,
     {2, 0, 0, 0}},
    {Cause::target_missing,
     Phase::session,
     "target-missing",
     "p2p_target_device_mac missing in the configuration",
     16,
     0,
     {}},
    {Cause::scan_busy, Phase::scan, "scan-busy", "SCAN refused: busy", 24, 0, {1, 0, 0, 0}},
    // Recorded under 21, not under the 8 that the mode returns.
    {Cause::scan_rejected, Phase::scan, "scan-rejected", "SCAN refused", 21, 0, {1, 0, 0, 0}},
    {Cause::network_not_found,
     Phase::scan,
     "network-not-found",
     "access point not among the scan results",
     9,
     0,
     {1, 0, 0, 0}},
    {Cause::network_not_added,
     Phase::associate,
     "network-not-added",
     "ADD_NETWORK failed",
     9,
     0,
     {1, 0, 0, 0}},
    {Cause::network_not_set,
     Phase::associate,
     "network-not-set",
     "SET_NETWORK failed",
     19,
     0,
     {1, 0, 0, 0}},
    {Cause::network_not_selected,
     Phase::associate,
     "network-not-selected",
     "SELECT_NETWORK failed or timed out",
     19,
     0,
     {1, 0, 0, 0}},
    {Cause::iperf_client,
     Phase::traffic,
     "iperf-client",
     "iperf client could not be started",
     14,
     0,
     {1, 0, 0, 1}},
    {Cause::network_not_disabled,
     Phase::disconnect,
     "network-not-disabled",
     "DISABLE_NETWORK failed or timed out",
     22,
     0,
     {1, 0, 0, 0}},
    {Cause::peer_not_found, Phase::find, "peer-not-found", "peer not found", 26, 0, {0, 1, 0, 1}},
    {Cause::not_connected,
     Phase::negotiate,
     "not-connected",
     "P2P_CONNECT failed or timed out",
     29,
     0,
     {0, 1, 0, 1}},
    {Cause::address_not_set,
     Phase::group,
     "address-not-set",
     "static address not set",
     12,
     0,
     {0, 1, 0, 0}},
    {Cause::dhcp_server,
     Phase::group,
     "dhcp-server",
     "DHCP server could not be started",
     12,
     0,
     {0, 1, 0, 0}},
    // The legacy mode goes on without an address and counts nothing.
    {Cause::dhcp_client, Phase::dhcp, "dhcp-client", "no address by DHCP", 21, 0, {0, 1, 0, 1}},
    {Cause::no_group_started,
     Phase::group,
     "no-group-started",
     "no P2P-GROUP-STARTED in time",
     10,
     0,
     {0, 1, 0, 0}},
    {Cause::group_not_added,
     Phase::group,
     "group-not-added",
     "P2P_GROUP_ADD failed or timed out",
     10,
     0,
     {}},
    {Cause::iperf_server,
     Phase::group,
     "iperf-server",
     "iperf server could not be started",
     13,
     0,
     {}},
    {Cause::group_not_removed,
     Phase::removal,
     "group-not-removed",
     "P2P_GROUP_REMOVE failed",
     32,
     0,
     {0, 0, 0, 1}},
    {Cause::prefix_not_found,
     Phase::scan,
     "prefix-not-found",
     "no access point with the SSID prefix",
     0,
     0,
     {}},
    {Cause::listing_empty, Phase::scan, "listing-empty", "scan listing empty", 0, 0, {}},
    {Cause::client_not_connected,
     Phase::serve,
     "client-not-connected",
     "peer asked to join and did not connect",
     0,
     0,
     {}},
    {Cause::no_traffic_figure,
     Phase::traffic,
     "no-traffic-figure",
     "iperf ran and gave no throughput",
     0,
     0,
     {}},
    {Cause::diag_read,
     Phase::mac,
     "diag-read",
     "DIAG device gave no data: the tool ended itself",
     0,
     0,
     {}},
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

constexpr std::array<std::string_view, 11> test_case_titles{
    "no test case", "module on the bus", "driver and interface", "MAC address", "loopback", "scan",
    "P2P device",   "autonomous GO",     "legacy WLAN",          "P2P client",  "unused"};

// Where a mode stands in `CauseRow::records`; -1 for a mode without a script.
int records_index(Mode mode) {
    switch (mode) {
    case Mode::legacy:
        return 0;
    case Mode::device:
        return 1;
    case Mode::go:
        return 2;
    case Mode::client:
        return 3;
    default:
        return -1;
    }
}

} // namespace

const CauseRow& row_of(Cause cause) {
    return rows.at(index_of(cause) < cause_count ? index_of(cause) : 0);
}

int test_case_of(Mode mode) {
    switch (mode) {
    case Mode::scan:
        return 5;
    case Mode::device:
        return 6;
    case Mode::go:
        return 7;
    case Mode::legacy:
        return 8;
    case Mode::client:
        return 9;
    default:
        return 0;
    }
}

unsigned records_of(Cause cause, Mode mode) {
    const CauseRow& row = row_of(cause);
    if (row.test_case != 0) {
        return 1;
    }
    const int index = records_index(mode);
    return index < 0 ? 0 : row.records[static_cast<std::size_t>(index)];
}

int test_case_of(Cause cause, Mode mode) {
    const CauseRow& row = row_of(cause);
    if (row.test_case != 0) {
        return row.test_case;
    }
    return records_of(cause, mode) == 0 ? 0 : test_case_of(mode);
}

std::string_view title_of_test_case(int test_case) {
    const auto index = static_cast<std::size_t>(test_case);
    return index < test_case_titles.size() ? test_case_titles[index] : test_case_titles[0];
}

} // namespace wivex::report

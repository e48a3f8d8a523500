// SPDX-License-Identifier: Apache-2.0
// Why something failed: every failure that the console can tell of. How often the result file
// counts it stands with the modes.
#pragma once

#include "model/phases.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wivex::report {

enum class Cause : std::uint8_t {
    module_absent,
    driver_absent,
    interface_down,
    mac_differs,
    loopback_failed,
    scan_failed,
    session_not_open,
    session_lost,
    target_missing,
    scan_busy,
    scan_rejected,
    network_not_found,
    network_not_added,
    network_not_set,
    network_not_selected,
    iperf_client,
    network_not_disabled,
    peer_not_found,
    not_connected,
    address_not_set,
    dhcp_server,
    dhcp_client,
    no_group_started,
    group_not_added,
    iperf_server,
    group_not_removed,
    // Told on the console, counted nowhere: the test goes on.
    prefix_not_found,
    listing_empty,
    client_not_connected,
    no_traffic_figure,
    diag_read,
    none,
};

constexpr std::size_t cause_count = static_cast<std::size_t>(Cause::none);
constexpr std::size_t index_of(Cause cause) {
    return static_cast<std::size_t>(cause);
}

struct CauseRow {
    Cause cause;
    Phase phase;
    /// Short name in run.json and junit.xml.
    std::string_view id;
    /// In words, for a reader.
    std::string_view words;
    /// The code under which the tool records it; 0 when it never does.
    int code;
    /// The test case of a check, whatever the mode; 0 when the mode decides.
    int test_case;
};

const CauseRow& row_of(Cause cause);

} // namespace wivex::report

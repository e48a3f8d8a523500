// SPDX-License-Identifier: Apache-2.0
// Why something failed: every failure that the console can tell of, and how often the tool's
// result file counts it.
#pragma once

#include "phases.hpp"

#include <array>
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
    /// Test case (1 to 10) of the checks, whatever the mode; 0 when the mode decides.
    int test_case;
    /// Records that it makes in the legacy, device, GO and client mode.
    std::array<std::uint8_t, 4> records;
};

const CauseRow& row_of(Cause cause);

/// The test case (1 to 10) under which the tool counts `cause` in `mode`; 0: under none.
int test_case_of(Cause cause, Mode mode);

/// How many failures one occurrence of `cause` adds to that test case.
unsigned records_of(Cause cause, Mode mode);

/// The test case number of a mode, 0 when it has none.
int test_case_of(Mode mode);

/// Number of the last test case that a result file can hold.
constexpr int last_test_case = 10;

/// What a test case of the result file (1 to 10) examines.
std::string_view title_of_test_case(int test_case);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Recording what happened, and the result file.
#pragma once

#include "common/run_options.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace wivex {

/// Text of each code from 0 to 31. Codes 32 and 33 are recorded too but have no text.
inline constexpr std::array<std::string_view, 32> error_code_texts{
    "passed",
    "Module not connected",
    "WIFI driver not ready",
    "WIFI iface not up",
    "WIFI Scan failed",
    "ctrl_iface open failed",
    "ctrl_iface attach failed",
    "Get scan result failed",
    "p2p group start failed",
    "dhcpd start failed",
    "IPERF server start  failed",
    "IPERf client start failed",
    "configuration file missing",
    "test case fail",
    "add network command failed",
    "set network command failed",
    "select network command failed",
    "UDHCHPC failed",
    "disable network command failed",
    "remove network command failed",
    "Get scan result failed",
    "p2p_find command failed",
    "p2p_stop_find command failed",
    "p2p_listen command failed",
    "p2p_connect command failed",
    "p2p_group_add command failed",
    "p2p_group_remove command failed",
    "p2p_disconnect command failed",
    "ping command failed",
    "Loopback failed",
    "CFG File Error",
    " Failure due to unknown reason",
};

/// Where the result file goes unless -R says otherwise.
inline constexpr const char* default_result_file = "/root/WIFIResult";

/// Enables the record at `index` and empties it.
void enable_test_case(TestCaseResults& results, int index);

/// Records a failure of the fixed checks and the scan mode: the code chooses the test case. Codes
/// that belong to none are ignored.
void record_failure(TestCaseResults& results, ErrorCode code, std::uint32_t iteration);

/// Records the outcome of a scripted mode; a pass is code 0. Indices other than 5 to 9 are ignored.
void record_test_case(TestCaseResults& results, int index, ErrorCode code, std::uint32_t iteration);

/// Writes one line for each enabled test case to the file `chosen_path` (empty: the default), in
/// place of what was there. A file that cannot be opened is reported and marks `stream` as failed.
void write_result_file(const TestCaseResults& results, const std::string& chosen_path,
                       ResultStream& stream);

} // namespace wivex

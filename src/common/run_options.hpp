// SPDX-License-Identifier: Apache-2.0
// The options of a run and its state, as every room reads them.
#pragma once

#include "common/files.hpp"
#include "common/test_case_result.hpp"

#include <cstdint>
#include <string>

namespace wivex {

/// Where the result file goes through. `failed` stays set once an open failed.
struct ResultStream {
    FileWriter file;
    bool failed = false;
};

struct RunOptions {
    /// Number of iterations (-m); the parser makes it at least 1.
    std::int32_t iteration_count = 0;
    /// SSID prefix of the scan mode: the argument of -S itself, or null.
    const char* scan_ssid = nullptr;
    /// Extra diagnostics (-u).
    std::uint8_t debug = 0;
    /// Pause that some steps take (-i), in seconds.
    std::int32_t iteration_interval = 0;

    // Modes chosen by -l -M -S -d -g -w -c -A.
    std::int32_t loopback_mode = 0;
    std::int32_t mac_mode = 0;
    std::int32_t scan_mode = 0;
    std::int32_t p2p_device_mode = 0;
    std::int32_t go_mode = 0;
    std::int32_t wlan_legacy_mode = 0;
    std::int32_t p2p_client_mode = 0;
    std::int32_t softap_mode = 0;

    /// 0 or 1 default file, 2 QCA file, 3 softAP file, -1 user file, anything else none (-F).
    std::int32_t config_choice = 0;
    std::string user_config_file;
    /// Empty means the default path (-R).
    std::string result_file;
    /// Access-point status file of the scan mode (-D).
    std::string ap_status_file = "/tmp/ap_status.txt";
    /// Anybody can put a link where the default status file goes: it is not followed.
    Links ap_status_links = Links::refuse;

    ResultStream result_stream;
    TestCaseResults results;
    /// Chip found by the last module check: 1..5, or 0 for none.
    std::int32_t chip_type = 0;
};

} // namespace wivex

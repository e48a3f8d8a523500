// SPDX-License-Identifier: Apache-2.0
#include "run/mode_table.hpp"

#include "modes/autonomous_go.hpp"
#include "modes/legacy_wlan.hpp"
#include "modes/p2p_client.hpp"
#include "modes/p2p_device.hpp"

#include <array>

namespace wivex {

namespace {

using namespace error_code;

// The lists are kept as they are: which codes a result file counts depends on them.
constexpr std::array<ErrorCode, 8> p2p_device_codes{
    session_not_open,    p2p_find_failed,         p2p_connect_failed,   dhcp_client_failed,
    iperf_client_failed, group_addressing_failed, group_removal_failed, group_not_started};

constexpr std::array<ErrorCode, 6> p2p_group_codes{session_not_open,    p2p_find_failed,
                                                   p2p_connect_failed,  dhcp_client_failed,
                                                   iperf_client_failed, group_removal_failed};

// A session that is not open counts twice: kept.
constexpr std::array<ErrorCode, 10> legacy_wlan_codes{
    session_not_open,      session_not_open,   scan_busy,
    network_not_found,     add_network_failed, set_network_failed,
    select_network_failed, dhcp_client_failed, iperf_client_failed,
    disable_network_failed};

constexpr std::array legacy_wlan_translations{
    Translation{scan_rejected, scan_rejected_as_recorded}};

constexpr Script p2p_device{p2p_device_test, p2p_device_codes, {}, 10};
constexpr Script autonomous_go{autonomous_go_test, p2p_group_codes, {}, 0};
constexpr Script legacy_wlan{legacy_wlan_test, legacy_wlan_codes, legacy_wlan_translations, 0};
constexpr Script p2p_client{p2p_client_test, p2p_group_codes, {}, 10};

constexpr int no_record = -1;

constexpr std::array<ModeRow, 8> rows{{
    {'A', &RunOptions::softap_mode, no_record, "softAP", nullptr},
    {'M', &RunOptions::mac_mode, test_case::mac_address, "MAC address", nullptr},
    {'l', &RunOptions::loopback_mode, test_case::loopback, "loopback", nullptr},
    {'S', &RunOptions::scan_mode, test_case::scan, "scan", nullptr},
    {'d', &RunOptions::p2p_device_mode, test_case::p2p_device, "P2P device", &p2p_device},
    {'g', &RunOptions::go_mode, test_case::autonomous_go, "autonomous GO", &autonomous_go},
    {'w', &RunOptions::wlan_legacy_mode, test_case::legacy_wlan, "legacy WLAN", &legacy_wlan},
    {'c', &RunOptions::p2p_client_mode, test_case::p2p_client, "P2P client", &p2p_client},
}};

} // namespace

std::span<const ModeRow> mode_table() {
    return rows;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The numbers under which failures are returned and recorded.
//
// One number can have several names: the checks, the station and P2P operations and the scripted
// modes each give it a meaning of their own. The numbers are kept.
#pragma once

#include <cstdint>

namespace wivex {

using ErrorCode = std::int32_t;

namespace error_code {

inline constexpr ErrorCode passed = 0;

// Filed by the fixed checks of the run loop.
inline constexpr ErrorCode module_absent = 1;
inline constexpr ErrorCode driver_not_loaded = 2;
inline constexpr ErrorCode interface_down = 3;
inline constexpr ErrorCode mac_address_differs = 4;
inline constexpr ErrorCode loopback_failed = 5;
inline constexpr ErrorCode scan_test_failed = 6;
inline constexpr ErrorCode kernel_scan_failed = 7;

// Results of the station operations and host tools.
inline constexpr ErrorCode disconnect_timeout = 1;
inline constexpr ErrorCode session_not_open = 6;
inline constexpr ErrorCode scan_rejected = 8;
inline constexpr ErrorCode add_network_failed = 18;
inline constexpr ErrorCode set_network_failed = 19;
inline constexpr ErrorCode select_network_failed = 20;
inline constexpr ErrorCode dhcp_client_failed = 21;
inline constexpr ErrorCode disable_network_failed = 22;
inline constexpr ErrorCode remove_network_not_formatted = 23;
inline constexpr ErrorCode scan_busy = 24;

// Results of the P2P operations that no mode calls.
inline constexpr ErrorCode p2p_listen_failed = 28;

// Further results of the scripted modes.
inline constexpr ErrorCode session_lost = -1;
inline constexpr ErrorCode group_not_started = 10;
inline constexpr ErrorCode group_addressing_failed = 12;
inline constexpr ErrorCode iperf_server_failed = 13;
inline constexpr ErrorCode peer_not_configured = 16;
inline constexpr ErrorCode p2p_find_failed = 26;
inline constexpr ErrorCode p2p_connect_failed = 29;
inline constexpr ErrorCode group_removal_failed = 32;
inline constexpr ErrorCode network_not_found = 9;
inline constexpr ErrorCode network_not_added = 9;
inline constexpr ErrorCode iperf_client_failed = 14;
inline constexpr ErrorCode network_not_selected = 19;

// Filed by the run loop in place of a code that a mode returned.
inline constexpr ErrorCode scan_rejected_as_recorded = 21;

} // namespace error_code

} // namespace wivex

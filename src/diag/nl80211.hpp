// SPDX-License-Identifier: Apache-2.0
// nl80211 messages as typed values. Nothing above this file sees an attribute.
#pragma once

#include "diag/information_elements.hpp"

#include <array>
#include <cstdint>

struct nl_msg;

namespace wivex {

/// One BSS of a scan dump.
struct BssEntry {
    std::array<std::uint8_t, 6> bssid{};
    /// Signal in units of 0.01 dBm; 0 when the driver reports none.
    std::int32_t signal_mbm = 0;
    /// Valid as long as the message it came in.
    Bytes elements;
};

enum class BssParse {
    complete,
    /// The message describes no BSS.
    no_bss,
    /// The BSS cannot be read.
    malformed,
    /// The BSS has no BSSID or no information elements.
    incomplete,
};

/// Reads the BSS of a message; attributes that are missing or too short are never read.
BssParse parse_bss(nl_msg* message, BssEntry& bss);

/// The nl80211 command of a message; -1 when it is too short to have one.
int command_of(nl_msg* message);

/// Fills `message` as a request to trigger a scan for all SSIDs, which `ssids` (empty) serves to
/// list. Returns false when the message has no room for it.
bool make_scan_trigger(nl_msg* message, nl_msg* ssids, int family, unsigned interface_index);

/// Fills `message` as a request for the dump of the BSS list.
bool make_scan_dump(nl_msg* message, int family, unsigned interface_index);

} // namespace wivex

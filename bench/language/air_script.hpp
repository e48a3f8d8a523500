// SPDX-License-Identifier: Apache-2.0
// What can be heard on the air and how the kernel's scan goes, as a scenario's "air" lines say it.
#pragma once

#include "language/times.hpp"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

class ScenarioLine;

struct HeardAccessPoint {
    std::array<std::uint8_t, 6> bssid{};
    int signal_mbm = 0;
    /// Whether it sent information elements at all, and which.
    bool has_elements = true;
    std::vector<std::uint8_t> elements;
    Times scans;
};

enum class AirFault {
    /// The trigger is refused with an error number.
    refuses,
    /// The kernel aborts the scan.
    aborts,
    /// The scan never ends.
    never_ends,
    /// The dump holds a message whose BSS cannot be parsed.
    malformed,
    /// The dump holds a message without a BSS.
    empty,
    /// The dump stops after a number of access points and never ends.
    cut,
    /// The dump is refused with an error number.
    fails,
    /// The socket has lost messages when the scan ends.
    overflows,
    /// The socket has lost the answer to the trigger.
    loses_answer,
    /// The socket has lost a part of the dump.
    loses_dump,
    /// Notifications of the scan come a number of times more, before the dump.
    repeats,
};

struct AirEvent {
    AirFault fault = AirFault::refuses;
    int number = 0;
    Times scans;
};

struct AirScript {
    std::vector<HeardAccessPoint> access_points;
    std::vector<AirEvent> events;
    bool has_nl80211 = true;
    bool has_scan_group = true;
    int scan_ms = 20;
    /// Whether the scenario speaks of the air at all.
    bool spoken = false;
};

/// Reads what follows the word "air". Returns false when it is not understood.
bool read_air(ScenarioLine& line, AirScript& script);

} // namespace bench

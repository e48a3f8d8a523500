// SPDX-License-Identifier: Apache-2.0
// Signals that the bench sends to the tool at planned moments.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// One signal: at a time after the tool's start, when the supplicant receives a command for the
/// n-th time, or when a child of the tool with this name runs; `delay_ms` counts from there.
struct PlannedSignal {
    int number = 0;
    std::string command;
    int command_count = 1;
    std::string child;
    int delay_ms = 0;
};

using SignalPlan = std::vector<PlannedSignal>;

/// Reads "INT@350ms", "TERM@command:SCAN", "INT@command:SCAN#2+100ms" or "INT@child:udhcpc+5ms".
std::optional<PlannedSignal> parse_signal(std::string_view text);

} // namespace bench

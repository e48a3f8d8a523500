// SPDX-License-Identifier: Apache-2.0
// Time stamps that a logging tool put before a line.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace wivex::report {

/// How a logging tool writes its time stamps.
enum class StampFormat : std::uint8_t {
    none,
    epoch, ///< 1718186400.123
    iso,   ///< 2024-06-12T10:11:12.123, also with a blank and in [brackets]
    clock, ///< 10:11:12.123
    month, ///< Jun 12 10:11:12
};

struct Stamp {
    StampFormat format = StampFormat::none;
    /// Seconds, UTC since 1970 with `epoch` and with a zone; else only differences mean something.
    double seconds = 0;
    /// Seconds by which the zone of the stamp is ahead of UTC, when it names one.
    std::optional<int> zone;
    /// The stamp as it stands, and the line behind it.
    std::string_view text;
    std::string_view rest;
};

/// Reads a stamp of `format`, or of any format when that is `StampFormat::none`.
std::optional<Stamp> read_stamp(std::string_view line, StampFormat format);

} // namespace wivex::report

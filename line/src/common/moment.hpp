// SPDX-License-Identifier: Apache-2.0
// Moments and days. Inside they are seconds since 1970 in UTC; a day is a day of the local zone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace wivex::line {

using Moment = std::int64_t;

constexpr Moment seconds_of_hour = 3600;
constexpr Moment seconds_of_day = 86400;

/// A moment like "2026-11-22T06:15:00+01:00" (RFC 3339); nothing when it is not one.
std::optional<Moment> moment_of(std::string_view text);

/// "2026-11-22 06:15:00" in local time.
std::string moment_text(Moment moment);

/// The same moment with its offset: "2026-11-22T06:15:00+01:00".
std::string stamp_text(Moment moment);

/// "2026-11-22", the local day of `moment`.
std::string day_text(Moment moment);

/// When the local day began that is `back` days before that of `moment`.
Moment day_begin(Moment moment, int back);

/// A span like "90s", "30m", "1h" or "7d" in seconds; nothing when it is not one.
std::optional<Moment> span_of(std::string_view text);

/// Tells the local day of one moment after the other; quick when they lie close together.
class DayTeller {
public:
    /// The begin of the local day of `moment`.
    Moment day_of(Moment moment);

private:
    Moment begin_ = 0;
    Moment end_ = 0;
};

} // namespace wivex::line

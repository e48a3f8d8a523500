// SPDX-License-Identifier: Apache-2.0
// A moment of the world's clock: UTC, and the zone in which it is shown.
#pragma once

#include <string>

namespace wivex::report {

struct Instant {
    /// Seconds since 1970, UTC.
    double utc = 0;
    /// Seconds by which the local time of the zone is ahead of UTC.
    int offset = 0;
};

/// "2026-03-29T03:10:00+02:00", whole seconds. Empty for a year that has no four digits.
std::string rfc3339(const Instant& instant);

} // namespace wivex::report

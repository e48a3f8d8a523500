// SPDX-License-Identifier: Apache-2.0
// The zone of this machine: local dates and times to UTC and back, also in the hour that a change
// to or from daylight saving time repeats or leaves out.
#pragma once

#include "common/instant.hpp"

#include <limits>

namespace wivex::report {

/// Seconds by which local time is ahead of UTC at `utc`, seconds since 1970.
int local_offset(double utc);

/// Turns the local times of one clock, told one after the other, into UTC.
class LocalZone {
public:
    /// `local`: seconds since 1970 as if local time were UTC. In the hour that stands twice on the
    /// clock it is the first one that does not lie before the last time told.
    Instant instant(double local);

private:
    int offset_ = 0;
    double quarter_ = std::numeric_limits<double>::quiet_NaN();
    double last_ = -std::numeric_limits<double>::infinity();
};

} // namespace wivex::report

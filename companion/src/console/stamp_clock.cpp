// SPDX-License-Identifier: Apache-2.0
#include "console/stamp_clock.hpp"

namespace wivex::report {

namespace {

constexpr double day = 86400;
constexpr double year = 365 * day;
// Lines of two writers may stand in the wrong order.
constexpr double disorder = 1;
constexpr double longest_wait = 2.0 * 3600;

// After how long a stamp of this kind is the same again; 0: never.
double turn_of(StampFormat format) {
    switch (format) {
    case StampFormat::clock:
        return day;
    case StampFormat::month:
        return year;
    default:
        return 0;
    }
}

} // namespace

// The seconds of `stamp` on a clock that does not begin anew.
double StampClock::running(const Stamp& stamp) {
    if (stamp.format == StampFormat::iso) {
        zone_assumed_ = zone_assumed_ || !stamp.zone;
        const Instant instant =
            stamp.zone ? Instant{stamp.seconds, *stamp.zone} : zone_.instant(stamp.seconds);
        offset_ = instant.offset;
        return instant.utc;
    }
    const double turn = turn_of(stamp.format);
    if (turn > 0 && format_ != StampFormat::none && stamp.seconds + turns_ < seconds_ - turn / 2) {
        turns_ += turn;
    }
    return stamp.seconds + turns_;
}

void StampClock::take(const Stamp& stamp) {
    const double before = seconds_;
    const bool first = format_ == StampFormat::none;
    seconds_ = running(stamp);
    format_ = stamp.format;
    const double step = seconds_ - before;
    jump_ = !first && (step < -disorder || step > longest_wait) ? step : 0;
    if (!first && step < 0 && jump_ == 0) {
        seconds_ = before;
    }
}

std::optional<Instant> StampClock::instant() const {
    if (format_ == StampFormat::epoch) {
        return Instant{seconds_, local_offset(seconds_)};
    }
    if (format_ == StampFormat::iso) {
        return Instant{seconds_, offset_};
    }
    return {};
}

} // namespace wivex::report

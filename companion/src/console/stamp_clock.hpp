// SPDX-License-Identifier: Apache-2.0
// The clock that the time stamps of a console make: it runs on past midnight, new year and changes
// to and from daylight saving time, and it tells when it jumped.
#pragma once

#include "common/instant.hpp"
#include "common/local_zone.hpp"
#include "console/time_stamps.hpp"

#include <optional>

namespace wivex::report {

class StampClock {
public:
    /// The next stamp of the console.
    void take(const Stamp& stamp);

    /// Seconds of the last stamp; only differences mean something.
    double seconds() const {
        return seconds_;
    }

    /// The moment of the last stamp; none when its kind tells no date.
    std::optional<Instant> instant() const;

    /// Seconds by which the clock jumped at the last stamp, negative when it went back; 0: it did
    /// not. A step on of some hours is taken for a jump: nothing that a test waits for takes so
    /// long.
    double jump() const {
        return jump_;
    }

    /// The stamps have a date and no zone: they were read as local times of this machine.
    bool zone_assumed() const {
        return zone_assumed_;
    }

private:
    double running(const Stamp& stamp);

    LocalZone zone_;
    StampFormat format_ = StampFormat::none;
    double seconds_ = 0;
    /// Whole days or years that the stamps do not tell.
    double turns_ = 0;
    double jump_ = 0;
    int offset_ = 0;
    bool zone_assumed_ = false;
};

} // namespace wivex::report

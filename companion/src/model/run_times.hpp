// SPDX-License-Identifier: Apache-2.0
// When a run was, as well as the source of its times can tell.
#pragma once

#include "common/instant.hpp"

#include <cstdint>
#include <optional>

namespace wivex::report {

/// The clock of the source did not run on evenly while the run was under way.
struct ClockJumps {
    std::uint32_t count = 0;
    /// The first of them, in seconds: negative when it went back.
    double first_seconds = 0;
    /// The console line behind it, from 1; 0: only the begin and the end of the run disagree.
    std::uint64_t first_line = 0;
};

struct RunTimes {
    /// Without a value where date or zone are not known.
    std::optional<Instant> began;
    std::optional<Instant> ended;
    /// The stamps have a date and no zone: they were read as local times of this machine.
    bool zone_assumed = false;
    ClockJumps jumps;
};

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// A run while it goes on: what was learnt so far, and what is under way.
#pragma once

#include "model/run.hpp"

#include <cstdint>

namespace wivex::report {

/// What goes on right now.
struct Now {
    bool running = false;
    bool in_iteration = false;
    std::uint32_t iteration = 0;
    Phase phase = Phase::none;
    /// Seconds on the clock of the reader, since when the phase is under way.
    double phase_since = 0;
    double iteration_since = 0;
    double run_since = 0;
    double megabits_per_second = -1;
};

struct Progress {
    const Log& log;
    Now now;

    /// The run that is being read, or the last one; null before the first.
    const Run* run() const {
        return log.runs.empty() ? nullptr : &log.runs.back();
    }
};

} // namespace wivex::report

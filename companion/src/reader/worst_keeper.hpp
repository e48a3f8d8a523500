// SPDX-License-Identifier: Apache-2.0
// Keeps the console lines of the iterations that are the worst of their run by some figure.
#pragma once

#include "model/run.hpp"
#include "reader/recent_lines.hpp"

#include <cstdint>

namespace wivex::report {

/// Where an iteration stands on the console.
struct LineRange {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
};

/// Takes an iteration that is over. `behind`: how many of the `recent` lines are not its own.
void note_worst(Run& run, const Iteration& iteration, const RecentLines& recent, LineRange lines,
                std::size_t behind);

} // namespace wivex::report

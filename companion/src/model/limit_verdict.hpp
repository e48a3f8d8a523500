// SPDX-License-Identifier: Apache-2.0
// Whether the figures of a run are within their limits: defined here and nowhere else. It stands
// beside the verdict on the run, and neither changes the other.
//
// A limit is `within` only when the console shows the whole run and every iteration that did not
// fail has a value. What breaks it makes it `outside`, however little of the run is there. Anything
// else is `unknown`, and that is never shown as good.
#pragma once

#include "model/run.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

/// The value of a limit's figure in one iteration. Nothing when it was not measured there.
std::optional<float> value_in(const Iteration& iteration, const Limit& limit);

/// Counts an iteration that is over among the tallies of its run.
void tally_limits(Run& run, const Iteration& iteration);

/// The values that a limit judges. Only of a figure that is no count.
const Series& series_of(const Run& run, const Limit& limit);

/// Of one run.
std::vector<LimitResult> judge_limits(const Run& run);

/// Of all runs of a console, those that were left out included: of each limit the worst one.
std::vector<LimitResult> judge_limits(const Log& log);

/// Keeps of each limit the worse result. Both are empty or of the same limits.
void keep_worse(std::vector<LimitResult>& results, const std::vector<LimitResult>& others);

/// The worst of all. Nothing when there are no limits.
std::optional<LimitVerdict> worst_of(const std::vector<LimitResult>& results);

/// Whether nothing speaks against a run: no limits, or within all of them.
bool are_kept(const std::vector<LimitResult>& results);

/// The limits of single iterations that `iteration` breaks.
std::vector<Limit> broken_by(const Run& run, const Iteration& iteration);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Whether a run of a report is a pass, and why not. It trusts nothing: a run that contradicts
// itself is refused, and only a verdict that everything else bears out is a pass.
#pragma once

#include "model/report.hpp"

namespace wivex::line {

/// Completes a run of the unit `serial` by what follows from the rest: date, verdict, cause, ids,
/// MAC addresses. `evidence`: see report_walk.hpp. Returns what is wrong with it; empty: nothing.
std::string judge(RunRecord& run, const Row& evidence, const std::string& serial);

} // namespace wivex::line

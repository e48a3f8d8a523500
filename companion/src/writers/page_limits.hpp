// SPDX-License-Identifier: Apache-2.0
// The limits of a run on the page: they stand beside the verdict of the tool, and never hide it.
#pragma once

#include "model/run.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

/// The verdict on the limits in a line; `green`: the runs have passed, so that "within limits" may
/// look good. Empty without limits.
std::string limits_line(const std::vector<LimitResult>& results, bool green);

/// Every limit with what was measured. Empty without limits.
std::string limits_card(const Run& run, bool green, const std::string& prefix);

/// An iteration by its number, as a link where its console lines are shown.
std::string iteration_link(const Run& run, std::uint32_t number, const std::string& prefix);

} // namespace wivex::report

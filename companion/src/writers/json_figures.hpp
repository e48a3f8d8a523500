// SPDX-License-Identifier: Apache-2.0
// The members of run.json that hold figures: spreads, distributions, limits, worst iterations.
#pragma once

#include "model/run.hpp"

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace wivex::report {

using Json = nlohmann::ordered_json;

/// Null when it is empty.
Json text_or_null(const std::string& text);

/// Null when it is not a number.
Json number_or_null(double value);

/// Null when there was no value.
Json spread_json(const Spread& values);
Json distribution_json(const Series& series);

Json limits_json(const std::vector<LimitResult>& results);
/// Null when there are no limits.
Json limits_verdict_json(const std::vector<LimitResult>& results);

Json worst_iterations_json(const Run& run);

} // namespace wivex::report

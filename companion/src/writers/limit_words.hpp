// SPDX-License-Identifier: Apache-2.0
// Limits in words, as several writers show them.
#pragma once

#include "model/limits.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

/// "28.5 Mbit/s"; empty without a value.
std::string value_words(const LimitResult& result);

/// "0, 3, 7 and 12 more".
std::string iterations_words(const LimitResult& result, std::size_t most = 10);

/// "throughput >= 30 Mbit/s: outside, 28.5 Mbit/s; 2 iterations: 0, 3".
std::string limit_sentence(const LimitResult& result);

/// "Within limits", "Outside the limits: 1 of 3", "Limits not known: ...". Empty without limits.
std::string limits_sentence(const std::vector<LimitResult>& results);

} // namespace wivex::report

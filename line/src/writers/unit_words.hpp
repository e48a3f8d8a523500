// SPDX-License-Identifier: Apache-2.0
// What there is to say about a unit, in words for terminal and page alike.
#pragma once

#include "store/unit_history.hpp"

#include <string>
#include <vector>

namespace wivex::line {

/// What makes its history doubtful, a sentence each.
std::vector<std::string> doubts_about(const UnitHistory& unit,
                                      const std::vector<Attempt>& attempts);

/// "Attempt 2", and whether the station has numbered it. `place` counts from 1.
std::string attempt_title(const Attempt& attempt, std::size_t place);

/// "passed", "failed: scan-rejected", "not known: killed", ...: the verdict on a run and why.
std::string verdict_words(const UnitRun& run);

/// "passed", or "no pass: ..." of an attempt.
std::string attempt_words(bool passed, const std::string& cause);

/// Its MAC addresses, with commas.
std::string mac_words(const UnitHistory& unit);

} // namespace wivex::line

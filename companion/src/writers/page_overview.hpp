// SPDX-License-Identifier: Apache-2.0
// The parts of the page that show a run at a glance: its counts, its iterations, its test cases.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

std::string tiles(const Run& run);
std::string timeline_card(const Run& run, const std::string& prefix);

/// `green`: the run has passed, and so have test cases without a failure.
std::string test_cases_card(const Run& run, bool green, const std::string& prefix);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The parts of the page that show what a run ran on: the device, and the access points around it.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

std::string facts_card(const Log& log, const Run& run, const std::string& prefix);

/// Empty when no access point was seen.
std::string access_points_card(const Run& run, const std::string& prefix);

} // namespace wivex::report

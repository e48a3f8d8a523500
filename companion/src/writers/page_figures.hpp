// SPDX-License-Identifier: Apache-2.0
// The parts of the page that show figures: phases and their times, throughput.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

std::string phases_card(const Run& run, const std::string& prefix);

/// Empty when no throughput was measured.
std::string throughput_card(const Run& run, const std::string& prefix);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// A unit as lines for a terminal.
#pragma once

#include "store/unit_history.hpp"

#include <string>

namespace wivex::line {

std::string unit_text(const UnitHistory& unit);

} // namespace wivex::line

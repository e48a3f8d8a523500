// SPDX-License-Identifier: Apache-2.0
// A unit as lines for a terminal.
#pragma once

#include "store/unit_history.hpp"

#include <string>

namespace wivex::line {

std::string unit_text(const UnitHistory& unit);

/// "passed", "failed: scan-rejected", "not known: killed", ...: the verdict on an attempt or a run
/// and why, without colours.
std::string verdict_words(bool passed, const std::string& verdict, const std::string& cause);

} // namespace wivex::line

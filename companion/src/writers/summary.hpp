// SPDX-License-Identifier: Apache-2.0
// A run in a few plain lines, for the end of a terminal session.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

std::string summary(const Run& run);

/// The same of all runs of a console, and the verdict on them together.
std::string summary(const Log& log);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Passes that prove little: the tool counts them, and the report says what they leave open.
#pragma once

#include "model/run.hpp"

#include <string>
#include <vector>

namespace wivex::report {

/// Whether `cause`, told as a warning, only makes a pass weak. Any other warning is a failure that
/// the tool does not count.
bool is_weak_pass(Cause cause);

/// In words: which passes of `run` prove little, and what they do not prove.
std::vector<std::string> weak_passes(const Run& run);

} // namespace wivex::report

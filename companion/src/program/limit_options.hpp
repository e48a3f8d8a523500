// SPDX-License-Identifier: Apache-2.0
// The limits that the command line gives, one by one or in a file.
#pragma once

#include "model/limits.hpp"

#include <string>
#include <vector>

namespace wivex::report {

/// Reads the limits of `texts` and then those of `file`, which may be empty. Returns what is wrong;
/// empty: nothing.
std::string read_limits(const std::vector<std::string>& texts, const std::string& file,
                        std::vector<Limit>& limits);

} // namespace wivex::report

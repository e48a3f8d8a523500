// SPDX-License-Identifier: Apache-2.0
// Compares two reports: "is the new driver slower?", "is station 3 worse than station 2?".
#pragma once

#include <string>

namespace wivex::report {

/// Compares the run.json at `before` with the one at `after`, says the outcome on standard output
/// and writes compare.html into the directory `out`, unless it is empty. Returns an exit status.
int run_comparison(const std::string& before, const std::string& after, const std::string& out);

} // namespace wivex::report

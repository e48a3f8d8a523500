// SPDX-License-Identifier: Apache-2.0
// Puts the report into its directory. A file appears there complete or not at all.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// Writes report.html, junit.xml and run.json into `directory`, which is made when it is missing.
/// Returns what went wrong; empty: nothing.
std::string write_report(const Log& log, const std::string& directory);

} // namespace wivex::report

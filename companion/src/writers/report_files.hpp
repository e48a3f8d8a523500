// SPDX-License-Identifier: Apache-2.0
// Puts the report into its directory. A file appears there complete or not at all.
#pragma once

#include "model/run.hpp"

#include <string>
#include <string_view>

namespace wivex::report {

/// Writes report.html, junit.xml and run.json into `directory`, which is made when it is missing.
/// Returns what went wrong; empty: nothing.
std::string write_report(const Log& log, const std::string& directory);

/// The same of one file of any content.
std::string write_into(const std::string& directory, std::string_view name,
                       const std::string& content);

} // namespace wivex::report

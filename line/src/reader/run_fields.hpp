// SPDX-License-Identifier: Apache-2.0
// Reads one entry of the list "runs" of a run.json.
#pragma once

#include "model/report.hpp"
#include "reader/bounded_json.hpp"

namespace wivex::line {

/// What is wrong with it goes to `problem`. The unit belongs to what a run proves.
RunRecord read_run(const Json& run, const std::string& where, const Identity& identity,
                   std::string& problem);

/// A MAC address in lower case; empty when `text` is none.
std::string mac_of(std::string_view text);

} // namespace wivex::line

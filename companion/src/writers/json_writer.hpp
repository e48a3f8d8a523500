// SPDX-License-Identifier: Apache-2.0
// run.json: the model for programs. docs/report-json.md describes every member.
#pragma once

#include "model/run.hpp"

#include <string>

namespace wivex::report {

/// Raised whenever a member changes its meaning or goes away; new members do not raise it.
constexpr int json_format_version = 2;

std::string write_json(const Log& log);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Reads a run.json for a comparison. It may come from anywhere: what does not fit is refused, and
// the memory is bounded by what a report can hold.
#pragma once

#include "model/comparison.hpp"

#include <cstddef>
#include <string>
#include <string_view>

namespace wivex::report {

/// A larger run.json is none of this program.
constexpr std::size_t largest_run_file = std::size_t{64} * 1024 * 1024;

/// Reads `content` into `reported`, all runs together. Returns what is wrong with it; empty:
/// nothing.
std::string read_run_file(std::string_view content, Reported& reported);

} // namespace wivex::report

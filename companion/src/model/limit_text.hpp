// SPDX-License-Identifier: Apache-2.0
// Limits as people write them: "throughput>=30", "dhcp<=5s", "associate.p95 <= 4 s".
#pragma once

#include "model/limits.hpp"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

constexpr std::size_t most_limits = 64;

/// Adds the limit that `text` says to `limits`; one that stands there already is passed over.
/// Returns what is wrong with it; empty: nothing.
std::string add_limit(std::vector<Limit>& limits, std::string_view text);

/// The same of a file: one limit a line, what stands behind '#' is a comment. The message begins
/// with `name` and the number of the line.
std::string add_limits_of_file(std::vector<Limit>& limits, std::string_view content,
                               std::string_view name);

} // namespace wivex::report

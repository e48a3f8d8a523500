// SPDX-License-Identifier: Apache-2.0
// The configuration file: one "key=value" a line, "#" and "//" begin a comment line.
#pragma once

#include "common/run_config.hpp"

#include <string>
#include <string_view>

namespace wivex {

/// What `lookup_config_key` returns for a key that it does not know.
inline constexpr int unknown_config_key = 39;

/// Returns the number of `key`, compared exactly.
int lookup_config_key(std::string_view key);

/// Reads the file at `path` into `config` and fills in what the chip tables know of its vendor.
/// Unknown keys are reported on standard error and skipped; so is the part of a line behind its
/// first 511 characters. Returns 1, or 0 when the file cannot be opened or not be read to its
/// end.
int read_config_file(const std::string& path, RunConfig& config);

} // namespace wivex

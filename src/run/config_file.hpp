// SPDX-License-Identifier: Apache-2.0
// The configuration file: one "key=value" a line, "#" and "//" begin a comment line.
#pragma once

#include "common/files.hpp"
#include "common/run_config.hpp"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace wivex {

/// What `lookup_config_key` returns for a key that it does not know.
inline constexpr int unknown_config_key = 39;

/// So many characters of a line count.
inline constexpr std::size_t longest_config_line = 511;

struct ConfigKey {
    std::string_view name;
    int number;
    std::string RunConfig::*field;
};

/// All keys.
std::span<const ConfigKey> config_key_table();

/// Returns the number of `key`, compared exactly.
int lookup_config_key(std::string_view key);

/// One line as far as it counts, without its newline.
struct ConfigLine {
    std::string text;
    /// It has more than 511 characters.
    bool cut = false;
};

/// Reads the next line; false when there is none.
bool read_config_line(FileReader& file, ConfigLine& line);

/// Where the value of `line` begins, behind its first "="; 0 for a comment and for a line without
/// one.
std::size_t find_config_value(std::string_view line);

/// Reads the file at `path` into `config` and fills in what the chip tables know of its vendor.
/// Unknown keys are reported on standard error and skipped; so is the part of a line behind its
/// first 511 characters. Returns 1, or 0 when the file cannot be opened or not be read to its
/// end.
int read_config_file(const std::string& path, RunConfig& config);

} // namespace wivex

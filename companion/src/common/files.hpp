// SPDX-License-Identifier: Apache-2.0
// Whole files of bounded size.
#pragma once

#include <cstddef>
#include <string>

namespace wivex::report {

/// Reads the file at `path` into `content`. Returns what is wrong, for people; empty: nothing. A
/// file of more than `most` bytes is refused.
std::string read_whole_file(const std::string& path, std::size_t most, std::string& content);

} // namespace wivex::report

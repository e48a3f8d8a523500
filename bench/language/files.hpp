// SPDX-License-Identifier: Apache-2.0
// Whole files, read and written at once.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bench {

/// Nothing when the file cannot be opened.
std::optional<std::string> read_file(const std::string& path);

/// False when the file cannot be opened, written or closed.
bool write_file(const std::string& path, std::string_view content);

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// Console bytes made safe to show: valid UTF-8 without control characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace wivex::report {

/// At most `most` bytes of `line`, everything that is not printable UTF-8 written as \xNN; ends in
/// "..." when something was left out.
std::string printable(std::string_view line, std::size_t most = 200);

/// Whether `text` is valid UTF-8 without control characters and can be shown as it stands.
bool is_printable(std::string_view text);

} // namespace wivex::report

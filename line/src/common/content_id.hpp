// SPDX-License-Identifier: Apache-2.0
// A short name for some bytes: the same bytes always have the same one.
#pragma once

#include <string>
#include <string_view>

namespace wivex::line {

/// 32 lower-case hex digits.
std::string content_id(std::string_view bytes);

/// Whether `text` has that form.
bool is_content_id(std::string_view text);

} // namespace wivex::line

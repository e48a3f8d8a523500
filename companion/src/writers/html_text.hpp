// SPDX-License-Identifier: Apache-2.0
// Small pieces of HTML.
#pragma once

#include <string>
#include <string_view>

namespace wivex::report {

/// `text` with the characters escaped that mean something to HTML.
std::string escaped(std::string_view text);

/// `text` escaped, what stands in `backquotes` as code.
std::string with_code(std::string_view text);

} // namespace wivex::report

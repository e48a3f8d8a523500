// SPDX-License-Identifier: Apache-2.0
// Small pieces of HTML: escaped text and numbers as a reader likes them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wivex::report {

/// `text` with the characters escaped that mean something to HTML.
std::string escaped(std::string_view text);

/// `text` escaped, what stands in `backquotes` as code.
std::string with_code(std::string_view text);

/// "0.4 s", "12.3 s", "3 min 12 s", "2 h 05 min"; "unknown" for a value that is not a number.
std::string duration_text(double seconds);

/// A number with as many places as its size deserves: "94.1", "0.42", "1200".
std::string figure_text(double value);

/// "1 failure", "3 failures".
std::string count_text(std::uint64_t count, std::string_view singular, std::string_view plural);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// Texts that come from files and from others, as a person is shown them.
#pragma once

#include <string>
#include <string_view>

namespace wivex::doctor {

/// `text` with every control character and every byte outside ASCII as "\xNN".
std::string printable(std::string_view text);

/// The same in double quotes.
std::string quoted(std::string_view text);

/// `text` as one word of a shell command line.
std::string shell_word(std::string_view text);

/// `text` without the blanks, tabs and carriage returns at its ends.
std::string_view trimmed(std::string_view text);

/// The first line of `text`, without its end.
std::string_view first_line(std::string_view text);

/// What `trimmed` takes away.
inline constexpr std::string_view blanks = " \t\r";

} // namespace wivex::doctor

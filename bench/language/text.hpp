// SPDX-License-Identifier: Apache-2.0
// Texts as scenarios, options and logs write them: escapes, quoted words, numbers.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// Replaces \n, \t, \r, \0, \\, \" and \xNN by their bytes; nothing when an escape is unknown.
std::optional<std::string> unescape(std::string_view text);

/// The reverse: every byte that is not printable, and backslash and quote, as an escape.
std::string escape(std::string_view bytes);

struct Word {
    std::string text;
    /// Whether it stood in quotes.
    bool quoted = false;
};

/// Splits a line at blanks; a text in double quotes is one word, its escapes replaced. A "#"
/// outside quotes begins a comment. Nothing when a quote is left open or an escape is unknown.
std::optional<std::vector<Word>> split_words(std::string_view line);

/// A decimal number that fills the whole text.
std::optional<int> to_number(std::string_view text);

} // namespace bench

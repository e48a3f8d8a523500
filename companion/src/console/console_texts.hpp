// SPDX-License-Identifier: Apache-2.0
// The texts of the tool's console and what each of them means. The one place to change when the
// tool learns a new line.
#pragma once

#include "console/finding.hpp"

#include <cstdint>
#include <span>
#include <string_view>

namespace wivex::report {

/// Stands before most lines of the tool.
constexpr std::string_view tool_prefix = "[WIFI]";

/// How a text stands in its line.
enum class Shape : std::uint8_t {
    whole,  ///< the text is the line
    begins, ///< something variable follows
    open,   ///< the tool writes no newline behind it: another text may follow in the same line
    ends,   ///< something variable stands before it
    inside, ///< something variable on both sides
};

/// What a text shows by itself, whatever it tells.
enum class Trait : std::uint8_t {
    none,
    anybodys,          ///< other programs print it too
    on_standard_error, ///< the console carries the tool's standard error; many causes show it too
};

struct TextRow;

/// A text as it stands in a line.
struct Match {
    const TextRow* row = nullptr;
    /// What follows the text (or stands before it, for `Shape::ends`).
    std::string_view argument;
    /// The text and what follows it, or the whole line.
    std::string_view said;
};

struct TextRow {
    Shape shape;
    std::string_view text;
    /// Reads what it tells; null: it tells nothing, but it is the tool's own.
    Told (*tells)(const Match&) = nullptr;
    Phase phase = Phase::none;
    Cause cause = Cause::none;
    /// The mode that alone prints this text; `Mode::unknown` when several do.
    Mode mode = Mode::unknown;
    Trait trait = Trait::none;
};

std::span<const TextRow> console_texts();

/// What `match` tells, as typed values.
ToolText typed(const Match& match);

} // namespace wivex::report

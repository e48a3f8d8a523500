// SPDX-License-Identifier: Apache-2.0
// One line of a scenario, read word by word.
#pragma once

#include "text.hpp"
#include "times.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace bench {

/// Reads the words from left to right. Every taker moves on only when it succeeds.
class Line {
public:
    explicit Line(std::span<const Word> words) : words_(words) {}

    bool at_end() const {
        return words_.empty();
    }
    /// Takes the next word when it is `word`.
    bool take(std::string_view word);
    std::optional<std::string> take_quoted();
    std::optional<std::string> take_any();
    std::optional<int> take_number();
    /// A number of 32 bits, decimal or hexadecimal with "0x".
    std::optional<std::uint32_t> take_word32();
    /// "20ms" or "3s".
    std::optional<int> take_milliseconds();
    /// "3", "2-4" or "2-".
    std::optional<Times> take_times();

private:
    /// Takes the next word when it is not quoted and `convert` makes something of it.
    template <typename Convert>
    auto take_with(Convert convert) -> decltype(convert(""));

    std::span<const Word> words_;
};

} // namespace bench

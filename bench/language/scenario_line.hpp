// SPDX-License-Identifier: Apache-2.0
// One line of a scenario, read word by word.
#pragma once

#include "language/text.hpp"
#include "language/times.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace bench {

/// Reads the words from left to right. Every taker moves on only when it succeeds.
class ScenarioLine {
public:
    explicit ScenarioLine(std::span<const Word> words) : words_(words) {}

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
    /// "after DELAY", if it stands there: sets `delay_ms`. False when no delay follows.
    bool take_after(int& delay_ms);
    /// "3", "2-4" or "2-".
    std::optional<Times> take_times();

private:
    /// Takes the next word when it is not quoted and `convert` makes something of it.
    template <typename Convert>
    auto take_with(Convert convert) -> decltype(convert(""));

    std::span<const Word> words_;
};

/// What reads the rest of a line after this word.
template <typename Script>
struct Reader {
    std::string_view word;
    bool (*read)(ScenarioLine& line, Script& script);
};

/// Reads the rest of a line as its next word says. False when no reader has this word, or when its
/// reader does not understand the rest.
template <typename Script, std::size_t count>
bool read_by_word(ScenarioLine& line, Script& script,
                  const std::array<Reader<Script>, count>& readers) {
    for (const Reader<Script>& reader : readers) {
        if (line.take(reader.word)) {
            return reader.read(line, script);
        }
    }
    return false;
}

} // namespace bench

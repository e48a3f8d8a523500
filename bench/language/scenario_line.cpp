// SPDX-License-Identifier: Apache-2.0
#include "language/scenario_line.hpp"

#include <charconv>

namespace bench {

namespace {

std::optional<int> to_milliseconds(std::string_view text) {
    if (text.ends_with("ms")) {
        return to_number(text.substr(0, text.size() - 2));
    }
    if (!text.ends_with("s")) {
        return std::nullopt;
    }
    const auto seconds = to_number(text.substr(0, text.size() - 1));
    return seconds ? std::optional<int>(*seconds * 1000) : std::nullopt;
}

std::optional<Times> to_times(std::string_view text) {
    const std::size_t dash = text.find('-');
    const auto first = to_number(text.substr(0, dash));
    if (!first) {
        return std::nullopt;
    }
    if (dash == std::string_view::npos) {
        return Times{*first, *first};
    }
    if (dash + 1 == text.size()) {
        return Times{*first, Times{}.last};
    }
    const auto last = to_number(text.substr(dash + 1));
    return last ? std::optional<Times>(Times{*first, *last}) : std::nullopt;
}

std::optional<std::uint32_t> to_word32(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x");
    if (hexadecimal) {
        text.remove_prefix(2);
    }
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value, hexadecimal ? 16 : 10);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

} // namespace

template <typename Convert>
auto ScenarioLine::take_with(Convert convert) -> decltype(convert("")) {
    if (at_end() || words_.front().quoted) {
        return std::nullopt;
    }
    auto value = convert(words_.front().text);
    if (value) {
        words_ = words_.subspan(1);
    }
    return value;
}

bool ScenarioLine::take(std::string_view word) {
    if (at_end() || words_.front().quoted || words_.front().text != word) {
        return false;
    }
    words_ = words_.subspan(1);
    return true;
}

std::optional<std::string> ScenarioLine::take_quoted() {
    return at_end() || !words_.front().quoted ? std::nullopt : take_any();
}

std::optional<std::string> ScenarioLine::take_any() {
    if (at_end()) {
        return std::nullopt;
    }
    std::string text = words_.front().text;
    words_ = words_.subspan(1);
    return text;
}

std::optional<int> ScenarioLine::take_number() {
    return take_with([](std::string_view text) { return to_number(text); });
}

std::optional<std::uint32_t> ScenarioLine::take_word32() {
    return take_with(to_word32);
}

std::optional<int> ScenarioLine::take_milliseconds() {
    return take_with(to_milliseconds);
}

bool ScenarioLine::take_after(int& delay_ms) {
    if (!take("after")) {
        return true;
    }
    const auto delay = take_milliseconds();
    delay_ms = delay.value_or(0);
    return delay.has_value();
}

std::optional<Times> ScenarioLine::take_times() {
    return take_with(to_times);
}

} // namespace bench

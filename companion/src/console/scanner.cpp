// SPDX-License-Identifier: Apache-2.0
#include "console/scanner.hpp"

#include <charconv>
#include <cmath>

namespace wivex::report {

void Scanner::expect(char c) {
    if (!optional(c)) {
        good_ = false;
    }
}

bool Scanner::optional(char c) {
    if (!at(c)) {
        return false;
    }
    rest_.remove_prefix(1);
    return true;
}

void Scanner::blanks() {
    while (optional(' ')) {
    }
}

long Scanner::number(std::size_t least, std::size_t most) {
    const std::size_t found = rest_.find_first_not_of("0123456789");
    const std::size_t length = found == std::string_view::npos ? rest_.size() : found;
    if (length < least || length > most) {
        good_ = false;
        return 0;
    }
    long value = 0;
    std::from_chars(rest_.data(), rest_.data() + length, value);
    rest_.remove_prefix(length);
    return value;
}

double Scanner::decimal() {
    double value = 0;
    const auto [end, error] =
        std::from_chars(rest_.data(), rest_.data() + rest_.size(), value, std::chars_format::fixed);
    if (error != std::errc() || !std::isfinite(value)) {
        good_ = false;
        return 0;
    }
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return value;
}

std::string_view Scanner::until(char c) {
    const std::size_t found = rest_.find(c);
    if (found == std::string_view::npos) {
        good_ = false;
        return {};
    }
    const std::string_view taken = rest_.substr(0, found);
    rest_.remove_prefix(found + 1);
    return taken;
}

double Scanner::fraction() {
    if (!at('.') && !at(',')) {
        return 0;
    }
    rest_.remove_prefix(1);
    const std::size_t before = rest_.size();
    const long value = number(1, 9);
    const auto places = static_cast<double>(before - rest_.size());
    return static_cast<double>(value) / std::pow(10.0, places);
}

double Scanner::clock() {
    const long hours = number(2, 2);
    expect(':');
    const long minutes = number(2, 2);
    expect(':');
    const long seconds = number(2, 2);
    const double part = fraction();
    return static_cast<double>(hours * 3600 + minutes * 60 + seconds) + part;
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "text.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

namespace wivex::doctor {

std::string printable(std::string_view text) {
    std::string shown;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= 0x20 && byte < 0x7f) {
            shown += character;
        } else {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\x%.2x", byte);
            shown += escape.data();
        }
    }
    return shown;
}

std::string quoted(std::string_view text) {
    return '"' + printable(text) + '"';
}

std::string shell_word(std::string_view text) {
    constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "0123456789_./:=@%+,-";
    if (!text.empty() && text.find_first_not_of(plain) == std::string_view::npos) {
        return std::string(text);
    }
    std::string word = "'";
    for (const char character : text) {
        if (character == '\'') {
            word += R"('\'')";
        } else {
            word += character;
        }
    }
    return word + '\'';
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view first_line(std::string_view text) {
    return text.substr(0, text.find('\n'));
}

} // namespace wivex::doctor

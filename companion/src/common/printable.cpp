// SPDX-License-Identifier: Apache-2.0
#include "common/printable.hpp"

#include <array>
#include <cstdint>

namespace wivex::report {

namespace {

constexpr std::string_view hex = "0123456789abcdef";

bool continues(std::string_view text, std::size_t position) {
    return position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U;
}

// The bytes of the UTF-8 character at the start of `text`; 0 when it is none, or one that XML
// forbids or a reader does not see.
std::size_t character_length(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80U) {
        return first >= 0x20U && first != 0x7FU ? 1 : 0;
    }
    const std::size_t length = first >= 0xC2U && first < 0xE0U   ? 2
                               : first >= 0xE0U && first < 0xF0U ? 3
                               : first >= 0xF0U && first < 0xF5U ? 4
                                                                 : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if (!continues(text, i)) {
            return 0;
        }
    }
    if (length < 2) {
        return 0;
    }
    std::uint32_t code = length == 2 ? first & 0x1FU : length == 3 ? first & 0x0FU : first & 0x07U;
    for (std::size_t i = 1; i < length; ++i) {
        code = (code << 6U) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool valid = code >= least.at(length) && code <= 0x10FFFF &&
                       (code < 0xD800 || code > 0xDFFF) && (code < 0x80 || code > 0x9F) &&
                       (code < 0x2028 || code > 0x202E) && (code < 0x2066 || code > 0x2069) &&
                       (code & 0xFFFEU) != 0xFFFEU;
    return valid ? length : 0;
}

} // namespace

std::string printable(std::string_view line, std::size_t most) {
    std::string text;
    text.reserve(line.size() < most ? line.size() : most + 3);
    while (!line.empty()) {
        if (text.size() >= most) {
            text += "...";
            return text;
        }
        if (line.front() == '\t') {
            text += ' ';
            line.remove_prefix(1);
            continue;
        }
        const std::size_t length = character_length(line);
        if (length == 0) {
            const auto byte = static_cast<unsigned char>(line.front());
            text += "\\x";
            text += hex[byte >> 4U];
            text += hex[byte & 0x0FU];
            line.remove_prefix(1);
            continue;
        }
        text += line.substr(0, length);
        line.remove_prefix(length);
    }
    return text;
}

bool is_printable(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = character_length(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

} // namespace wivex::report

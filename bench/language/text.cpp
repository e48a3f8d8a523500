// SPDX-License-Identifier: Apache-2.0
#include "language/text.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdio>

namespace bench {

namespace {

std::optional<char> simple_escape(char letter) {
    switch (letter) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    case '0':
        return '\0';
    case '\\':
    case '"':
        return letter;
    default:
        return std::nullopt;
    }
}

std::optional<char> hex_byte(std::string_view digits) {
    unsigned value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (digits.size() != 2 || result.ptr != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return static_cast<char>(value);
}

// The closing quote of the text that begins at `start`; npos when there is none.
std::size_t closing_quote(std::string_view line, std::size_t start) {
    for (std::size_t at = start; at < line.size(); ++at) {
        if (line[at] == '\\') {
            ++at;
        } else if (line[at] == '"') {
            return at;
        }
    }
    return std::string_view::npos;
}

} // namespace

std::optional<std::string> unescape(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            bytes.push_back(text[at]);
            continue;
        }
        if (++at == text.size()) {
            return std::nullopt;
        }
        const auto byte =
            text[at] == 'x' ? hex_byte(text.substr(at + 1, 2)) : simple_escape(text[at]);
        if (!byte) {
            return std::nullopt;
        }
        bytes.push_back(*byte);
        at += text[at] == 'x' ? 2 : 0;
    }
    return bytes;
}

std::string escape(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (byte == '\n') {
            text += "\\n";
        } else if (byte == '\\' || byte == '"') {
            text += '\\';
            text += byte;
        } else if (std::isprint(static_cast<unsigned char>(byte)) != 0) {
            text += byte;
        } else {
            std::array<char, 5> hex{};
            std::snprintf(hex.data(), hex.size(), "\\x%02x", static_cast<unsigned char>(byte));
            text += hex.data();
        }
    }
    return text;
}

std::optional<std::vector<Word>> split_words(std::string_view line) {
    std::vector<Word> words;
    std::size_t at = 0;
    while (at < line.size()) {
        if (line[at] == ' ' || line[at] == '\t' || line[at] == '\r') {
            ++at;
        } else if (line[at] == '#') {
            break;
        } else if (line[at] == '"') {
            const std::size_t end = closing_quote(line, at + 1);
            if (end == std::string_view::npos) {
                return std::nullopt;
            }
            auto text = unescape(line.substr(at + 1, end - at - 1));
            if (!text) {
                return std::nullopt;
            }
            words.push_back({std::move(*text), true});
            at = end + 1;
        } else {
            const std::size_t end = std::min(line.find_first_of(" \t\r", at), line.size());
            words.push_back({std::string(line.substr(at, end - at)), false});
            at = end;
        }
    }
    return words;
}

std::optional<int> to_number(std::string_view text) {
    int number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || result.ec != std::errc{} || result.ptr != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

} // namespace bench

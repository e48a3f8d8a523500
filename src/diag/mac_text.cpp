// SPDX-License-Identifier: Apache-2.0
#include "diag/mac_text.hpp"

namespace wivex {

void format_mac(std::span<char, mac_text_length + 1> text, std::span<const std::uint8_t, 6> bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::size_t characters_of_byte = 3;
    for (std::size_t byte = 0; byte < bytes.size(); ++byte) {
        const std::size_t at = byte * characters_of_byte;
        text[at] = digits[bytes[byte] >> 4U];
        text[at + 1] = digits[bytes[byte] & 0xFU];
        text[at + 2] = ':';
    }
    text.back() = '\0';
}

std::string format_mac(const std::array<std::uint8_t, 6>& bytes) {
    std::array<char, mac_text_length + 1> text{};
    format_mac(text, bytes);
    return text.data();
}

void append_lowest_bytes(std::string& mac, std::string_view digits, std::size_t count) {
    constexpr std::size_t digits_of_byte = 2;
    for (std::size_t byte = 1; byte <= count; ++byte) {
        mac += digits.substr(digits.size() - byte * digits_of_byte, digits_of_byte);
        mac += ':';
    }
}

} // namespace wivex

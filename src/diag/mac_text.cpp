#include "diag/mac_text.hpp"

#include <cstdio>

namespace wivex {

void format_mac(std::span<char, mac_text_length + 1> text, std::span<const std::uint8_t, 6> bytes) {
    std::snprintf(text.data(), text.size(), "%02X:%02X:%02X:%02X:%02X:%02X", bytes[0], bytes[1],
                  bytes[2], bytes[3], bytes[4], bytes[5]);
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

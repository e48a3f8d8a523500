// SPDX-License-Identifier: Apache-2.0
#include "diag/information_elements.hpp"

#include <cctype>
#include <string_view>

namespace wivex {

namespace {

constexpr std::uint8_t ssid_element = 0;
constexpr std::size_t header_length = 2;
constexpr std::size_t longest_ssid = 32;

bool is_printed_as_it_is(Bytes ssid, std::size_t at) {
    const std::uint8_t byte = ssid[at];
    if (byte == ' ') {
        return at != 0 && at != ssid.size() - 1;
    }
    return byte != '\\' && std::isprint(byte) != 0;
}

} // namespace

Bytes find_ssid(Bytes elements) {
    while (elements.size() >= header_length) {
        const std::uint8_t id = elements[0];
        const std::size_t length = elements[1];
        elements = elements.subspan(header_length);
        if (length > elements.size()) {
            break;
        }
        if (id == ssid_element && length >= 1 && length <= longest_ssid) {
            return elements.first(length);
        }
        elements = elements.subspan(length);
    }
    return {};
}

SsidText escape_ssid(Bytes ssid) {
    constexpr std::string_view digits = "0123456789abcdef";
    SsidText text;
    for (std::size_t at = 0; at < ssid.size(); ++at) {
        const std::uint8_t byte = ssid[at];
        if (is_printed_as_it_is(ssid, at)) {
            text.append(static_cast<char>(byte));
            continue;
        }
        text.append("\\x");
        text.append(digits[byte >> 4U]);
        text.append(digits[byte & 0xFU]);
    }
    return text;
}

} // namespace wivex

#include "diag/information_elements.hpp"

#include <array>
#include <cctype>
#include <cstdio>

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
    return byte != '\\' && byte < 0x80 && std::isprint(byte) != 0;
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
    SsidText text;
    for (std::size_t at = 0; at < ssid.size(); ++at) {
        std::array<char, 5> shown{static_cast<char>(ssid[at])};
        if (!is_printed_as_it_is(ssid, at)) {
            std::snprintf(shown.data(), shown.size(), "\\x%.2x", static_cast<unsigned>(ssid[at]));
        }
        text.append(shown.data());
    }
    return text;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Information elements of any access point, down to the line of the listing. What is printed is
// printable, stays on its line and says which bytes were sent.

#include "diag/scan_listing.hpp"
#include "memory_file.hpp"
#include "require.hpp"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using fuzz::require;
using wivex::Bytes;

// Walks the elements by index instead of cutting them off the front.
Bytes ssid_by_index(Bytes elements) {
    for (std::size_t at = 0; at + 2 <= elements.size(); at += 2U + elements[at + 1]) {
        const std::size_t length = elements[at + 1];
        if (at + 2 + length > elements.size()) {
            break;
        }
        if (elements[at] == 0 && length >= 1 && length <= 32) {
            return elements.subspan(at + 2, length);
        }
    }
    return {};
}

std::vector<std::uint8_t> unescape(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\\') {
            require(text.size() - at >= 4 && text[at + 1] == 'x');
            const std::string digits(text.substr(at + 2, 2));
            bytes.push_back(static_cast<std::uint8_t>(std::strtoul(digits.c_str(), nullptr, 16)));
            at += 4;
        } else {
            require(text[at] >= ' ' && text[at] <= '~');
            bytes.push_back(static_cast<std::uint8_t>(text[at]));
            ++at;
        }
    }
    return bytes;
}

std::string printed(Bytes elements, wivex::AccessPoint& access_point) {
    const fuzz::MemoryFile file;
    wivex::FileWriter listing{wivex::UniqueFd(file.descriptor())};
    wivex::print_ssid(listing, elements, access_point);
    require(listing.close() == 0);
    return file.content();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes elements(data, size);
    const Bytes ssid = wivex::find_ssid(elements);
    const Bytes expected = ssid_by_index(elements);
    require(ssid.size() == expected.size());
    require(ssid.empty() || ssid.data() == expected.data());

    wivex::AccessPoint access_point;
    const std::string line = printed(elements, access_point);
    const std::string_view shown = access_point.ssid.view();
    require(line == "\tSSID: " + std::string(shown) + "\n");
    require(unescape(shown) == std::vector<std::uint8_t>(ssid.begin(), ssid.end()));
    require(shown.empty() || (shown.front() != ' ' && shown.back() != ' '));
    return 0;
}

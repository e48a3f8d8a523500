// SPDX-License-Identifier: Apache-2.0
#include "diag/scan_listing.hpp"

#include "diag/mac_text.hpp"

#include <array>
#include <charconv>
#include <cstdlib>

namespace wivex {

namespace {

void keep_bssid(const BssEntry& bss, AccessPoint& access_point) {
    std::array<char, mac_text_length + 1> text{};
    format_mac(text, bss.bssid);
    access_point.bssid = FixedText<18>({text.data(), mac_text_length});
}

void append_number(FixedText<32>& text, std::int32_t value, std::size_t digits) {
    std::array<char, 12> number{};
    auto* const end =
        std::to_chars(number.begin(), number.end(), std::abs(std::int64_t{value})).ptr;
    const auto length = static_cast<std::size_t>(end - number.begin());
    if (value < 0) {
        text.append('-');
    }
    if (length < digits) {
        text.append('0');
    }
    text.append({number.data(), length});
}

// The division truncates and both parts keep their sign: -5512 is printed as -55.-12. Kept.
FixedText<32> signal_text(std::int32_t mbm) {
    FixedText<32> text;
    append_number(text, mbm / 100, 1);
    text.append('.');
    append_number(text, mbm % 100, 2);
    return text;
}

} // namespace

void print_ssid(FileWriter& listing, Bytes elements, AccessPoint& access_point) {
    access_point.ssid = escape_ssid(find_ssid(elements));
    FixedText<160> line("\tSSID: ");
    line.append(access_point.ssid.view());
    line.append('\n');
    listing.put(line.view());
}

AccessPoint list_bss(FileWriter& listing, const BssEntry& bss) {
    AccessPoint access_point;
    keep_bssid(bss, access_point);
    const FixedText<32> signal = signal_text(bss.signal_mbm);
    access_point.signal = FixedText<8>(signal.view());
    FixedText<64> lines;
    lines.append("BSS ");
    lines.append(access_point.bssid.view());
    lines.append(" \n\tsignal: ");
    lines.append(signal.view());
    lines.append(" dBm\n");
    listing.put(lines.view());
    print_ssid(listing, bss.elements, access_point);
    return access_point;
}

} // namespace wivex

#include "diag/scan_listing.hpp"

#include "diag/mac_text.hpp"

#include <array>

namespace wivex {

namespace {

void print_bssid(std::FILE* listing, const BssEntry& bss, AccessPoint& access_point) {
    std::array<char, mac_text_length + 1> text{};
    format_mac(text, bss.bssid);
    access_point.bssid = FixedText<18>(text.data());
    std::fprintf(listing, "BSS %s \n", text.data());
}

void print_signal(std::FILE* listing, const BssEntry& bss, AccessPoint& access_point) {
    // The division truncates and both parts keep their sign: -5512 is printed as -55.-12.
    // Evaluations of the listing read it so.
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%d.%.2d", bss.signal_mbm / 100, bss.signal_mbm % 100);
    access_point.signal = FixedText<8>(text.data());
    std::fprintf(listing, "\tsignal: %s dBm\n", text.data());
}

} // namespace

void print_ssid(std::FILE* listing, Bytes elements, AccessPoint& access_point) {
    access_point.ssid = escape_ssid(find_ssid(elements));
    std::fprintf(listing, "\tSSID: %s\n", access_point.ssid.c_str());
}

AccessPoint list_bss(std::FILE* listing, const BssEntry& bss) {
    AccessPoint access_point;
    print_bssid(listing, bss, access_point);
    print_signal(listing, bss, access_point);
    print_ssid(listing, bss.elements, access_point);
    return access_point;
}

} // namespace wivex

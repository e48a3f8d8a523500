// SPDX-License-Identifier: Apache-2.0
#include "diag/scan_listing.hpp"
#include "scratch.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>

namespace wivex {
namespace {

using namespace test_support;

struct Listed {
    std::string lines;
    AccessPoint access_point;
};

Listed list(const BssEntry& bss) {
    const ScratchDirectory directory;
    const std::string path = directory / "listing";
    Listed listed;
    FileWriter file(open_to_write(path.c_str()));
    listed.access_point = list_bss(file, bss);
    file.close();
    listed.lines = read_file(path);
    return listed;
}

BssEntry heard_at(std::int32_t mbm) {
    BssEntry bss;
    bss.bssid = {0x02, 0, 0, 0, 0x01, 0x0a};
    bss.signal_mbm = mbm;
    return bss;
}

void expect_signal(const std::string& text, std::int32_t mbm) {
    EXPECT_EQ(list(heard_at(mbm)).lines,
              "BSS 02:00:00:00:01:0A \n\tsignal: " + text + " dBm\n\tSSID: \n");
}

TEST(ListedSignal, is_split_by_a_division_that_truncates) {
    expect_signal("-55.-12", -5512);
    expect_signal("-71.-05", -7105);
    expect_signal("-40.00", -4000);
    expect_signal("7.30", 730);
}

TEST(ListedSignal, of_less_than_10_dBm_has_one_digit_before_the_point) {
    expect_signal("-5.-12", -512);
    expect_signal("-9.-99", -999);
    expect_signal("0.-05", -5);
    expect_signal("0.00", 0);
}

TEST(ListedSignal, of_any_size_is_whole) {
    expect_signal("-21474836.-48", std::numeric_limits<std::int32_t>::min());
    expect_signal("21474836.47", std::numeric_limits<std::int32_t>::max());
}

TEST(ListedSignal, is_kept_up_to_7_characters) {
    EXPECT_EQ(list(heard_at(-5512)).access_point.signal.view(), "-55.-12");
    EXPECT_EQ(list(heard_at(-10012)).access_point.signal.view(), "-100.-1");
}

TEST(ListedBss, is_kept_as_it_is_listed) {
    constexpr std::array<std::uint8_t, 6> elements{0, 4, ' ', 'a', 'b', ' '};
    BssEntry bss = heard_at(-4000);
    bss.elements = elements;
    const Listed listed = list(bss);
    EXPECT_EQ(listed.lines, "BSS 02:00:00:00:01:0A \n\tsignal: -40.00 dBm\n\tSSID: \\x20ab\\x20\n");
    EXPECT_EQ(listed.access_point.bssid.view(), "02:00:00:00:01:0A");
    EXPECT_EQ(listed.access_point.ssid.view(), "\\x20ab\\x20");
}

} // namespace
} // namespace wivex

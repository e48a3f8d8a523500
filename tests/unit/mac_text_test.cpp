// SPDX-License-Identifier: Apache-2.0
#include "diag/mac_text.hpp"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <string>

namespace {

TEST(MacText, formats_bytes_in_upper_case) {
    EXPECT_EQ("00:0A:F5:12:34:FE", wivex::format_mac({0x00, 0x0a, 0xf5, 0x12, 0x34, 0xfe}));
}

TEST(MacText, takes_17_characters_and_a_terminator_of_its_buffer) {
    std::string buffer(24, 'x');
    wivex::format_mac(std::span(buffer).first<wivex::mac_text_length + 1>(),
                      std::array<std::uint8_t, 6>{0x00, 0x0a, 0xf5, 0x12, 0x34, 0xfe});
    EXPECT_EQ(std::string("00:0A:F5:12:34:FE\0xxxxxx", 24), buffer);
}

TEST(MacText, takes_the_lowest_bytes_of_a_word_first) {
    std::string mac;
    wivex::append_lowest_bytes(mac, "33221100", 4);
    EXPECT_EQ("00:11:22:33:", mac);
    wivex::append_lowest_bytes(mac, "00005544", 2);
    EXPECT_EQ("00:11:22:33:44:55:", mac);
}

TEST(MacText, keeps_the_case_of_the_digits) {
    std::string mac;
    wivex::append_lowest_bytes(mac, "aBCdEf01", 4);
    EXPECT_EQ("01:Ef:Cd:aB:", mac);
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "diag/information_elements.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace wivex {
namespace {

using namespace std::string_literals;

Bytes bytes_of(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string ssid_in(const std::string& elements) {
    const Bytes ssid = find_ssid(bytes_of(elements));
    return {ssid.begin(), ssid.end()};
}

std::string escaped(const std::string& ssid) {
    return std::string(escape_ssid(bytes_of(ssid)).view());
}

TEST(FindSsid, takes_the_first_element_of_1_to_32_bytes) {
    EXPECT_EQ(ssid_in("\0\x01x"s), "x");
    EXPECT_EQ(ssid_in("\0\x20"s + std::string(32, 'x')), std::string(32, 'x'));
    EXPECT_EQ(ssid_in("\0\x21"s + std::string(33, 'x') + "\0\x02ok"s), "ok");
    EXPECT_EQ(ssid_in("\0\x02on\0\x03two"s), "on");
}

TEST(FindSsid, passes_over_other_elements_and_empty_ones) {
    EXPECT_EQ(ssid_in("\x01\x02zz\0\0\0\x02ok"s), "ok");
    EXPECT_EQ(ssid_in("\0\0"s), "");
}

TEST(FindSsid, ends_at_an_element_that_claims_more_than_there_is) {
    EXPECT_EQ(ssid_in("\x01\x07zz\0\x02no"s), "");
    EXPECT_EQ(ssid_in("\0\x03no"s), "");
    EXPECT_EQ(ssid_in("\0"s), "");
}

TEST(EscapedSsid, shows_every_printable_character_as_it_is) {
    const std::string printable = "!\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                  "[]^_`abcdefghijklmnopqrstuvwxyz{|}~";
    EXPECT_EQ(escaped(printable.substr(0, 32)), printable.substr(0, 32));
    EXPECT_EQ(escaped(printable.substr(32, 32)), printable.substr(32, 32));
    EXPECT_EQ(escaped(printable.substr(64)), printable.substr(64));
}

TEST(EscapedSsid, shows_all_other_bytes_by_their_numbers) {
    EXPECT_EQ(escaped("\0\x01\x1f\x7f\x80\xa9\xbc\xde\xff"s),
              "\\x00\\x01\\x1f\\x7f\\x80\\xa9\\xbc\\xde\\xff");
    EXPECT_EQ(escaped("\\"), "\\x5c");
}

TEST(EscapedSsid, shows_a_blank_as_it_is_unless_it_is_the_first_or_the_last_byte) {
    EXPECT_EQ(escaped("a b"), "a b");
    EXPECT_EQ(escaped(" ab "), "\\x20ab\\x20");
    EXPECT_EQ(escaped(" "), "\\x20");
}

TEST(EscapedSsid, of_32_bytes_that_need_a_number_each_is_whole) {
    EXPECT_EQ(escaped(std::string(32, '\x7f')).size(), 128U);
}

} // namespace
} // namespace wivex

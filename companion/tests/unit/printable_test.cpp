// SPDX-License-Identifier: Apache-2.0
#include "common/printable.hpp"

#include <gtest/gtest.h>

namespace {

using wivex::report::printable;

TEST(Printable, keeps_text_of_all_languages) {
    EXPECT_EQ(printable("caf\u00e9 \u7121\u7dda \U0001F4F6"), "caf\u00e9 \u7121\u7dda \U0001F4F6");
}

TEST(Printable, shows_bytes_that_are_no_text_by_their_number) {
    EXPECT_EQ(printable(std::string_view("a\x00\x1b[31m\x7f", 8)), "a\\x00\\x1b[31m\\x7f");
    EXPECT_EQ(printable("\xff\xc3("), "\\xff\\xc3(");
    EXPECT_EQ(printable("\xed\xa0\x80"), "\\xed\\xa0\\x80");
    EXPECT_EQ(printable("\xc0\x80"), "\\xc0\\x80");
}

TEST(Printable, shows_characters_that_would_turn_the_text_around) {
    EXPECT_EQ(printable("\u202eabc"), "\\xe2\\x80\\xaeabc");
}

TEST(Printable, writes_a_tab_as_a_blank) {
    EXPECT_EQ(printable("a\tb"), "a b");
}

TEST(Printable, cuts_a_long_text) {
    EXPECT_EQ(printable("abcdef", 3), "abc...");
    EXPECT_EQ(printable("abc", 3), "abc");
}

} // namespace

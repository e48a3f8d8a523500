// SPDX-License-Identifier: Apache-2.0
// Text in a buffer of a fixed size.

#include "common/fixed_text.hpp"

#include <gtest/gtest.h>

namespace {

using wivex::FixedText;

TEST(FixedTextOfEight, is_empty_at_first) {
    const FixedText<8> text;
    EXPECT_EQ(text.view(), "");
    EXPECT_STREQ(text.c_str(), "");
}

TEST(FixedTextOfEight, keeps_seven_characters) {
    const FixedText<8> text("1234567");
    EXPECT_EQ(text.view(), "1234567");
    EXPECT_STREQ(text.c_str(), "1234567");
}

TEST(FixedTextOfEight, cuts_what_does_not_fit) {
    FixedText<8> text("12345");
    text.append("6789");
    EXPECT_EQ(text.view(), "1234567");
    EXPECT_STREQ(text.c_str(), "1234567");
}

TEST(FixedTextOfEight, takes_a_last_character) {
    FixedText<8> text("123456");
    text.append('7');
    EXPECT_EQ(text.view(), "1234567");
}

TEST(FixedTextOfEight, drops_a_character_when_it_is_full) {
    FixedText<8> text("1234567");
    text.append('8');
    EXPECT_EQ(text.view(), "1234567");
    EXPECT_STREQ(text.c_str(), "1234567");
}

TEST(FixedTextOfEight, grows_at_its_end) {
    FixedText<8> text("ab");
    text.append("cd");
    text.append('e');
    EXPECT_EQ(text.view(), "abcde");
}

} // namespace

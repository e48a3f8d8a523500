// SPDX-License-Identifier: Apache-2.0
// The span that a reply of the supplicant is read into.

#include "common/reply.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

using wivex::Reply;

class ReplyOfEight : public ::testing::Test {
protected:
    std::array<char, 9> buffer_{'#', '#', '#', '#', '#', '#', '#', '#', '#'};
    Reply reply_{buffer_};
};

TEST_F(ReplyOfEight, keeps_the_last_character_of_its_buffer_for_the_terminator) {
    EXPECT_EQ(reply_.capacity(), 8U);
}

TEST_F(ReplyOfEight, is_as_long_as_its_capacity_before_anything_came) {
    EXPECT_EQ(reply_.length(), 8U);
}

TEST_F(ReplyOfEight, is_as_long_as_its_limit_before_anything_came) {
    EXPECT_EQ(reply_.limited_to(3).length(), 3U);
}

TEST_F(ReplyOfEight, ends_where_the_text_ends) {
    std::memcpy(reply_.data(), "OK\n#", 4);
    reply_.end_at(3);
    EXPECT_STREQ(reply_.c_str(), "OK\n");
    EXPECT_EQ(reply_.length(), 3U);
}

TEST_F(ReplyOfEight, never_ends_behind_its_buffer) {
    reply_.end_at(9);
    EXPECT_STREQ(reply_.c_str(), "########");
    EXPECT_EQ(reply_.length(), 8U);
}

TEST_F(ReplyOfEight, offers_less_when_it_is_limited) {
    Reply limited = reply_.limited_to(3);
    EXPECT_EQ(limited.capacity(), 3U);
    EXPECT_STREQ(limited.cleared().c_str(), "");
    EXPECT_EQ(buffer_, (std::array<char, 9>{'\0', '\0', '\0', '\0', '#', '#', '#', '#', '#'}));
}

TEST_F(ReplyOfEight, never_offers_more_than_its_buffer) {
    EXPECT_EQ(reply_.limited_to(9).capacity(), 8U);
}

TEST_F(ReplyOfEight, searches_its_text_only_up_to_a_zero_byte) {
    std::memcpy(reply_.data(), "OK\0FAIL", 7);
    reply_.end_at(7);
    EXPECT_TRUE(reply_.contains("OK"));
    EXPECT_FALSE(reply_.contains("FAIL"));
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "diag/register_files.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;
using wivex::fit_command;
using wivex::parse_register_dump;
using wivex::RegisterDump;

void expect_incomplete(const std::string& text, const std::string& line, int length) {
    const RegisterDump dump = parse_register_dump(text);
    EXPECT_FALSE(dump.complete());
    EXPECT_EQ(line, dump.line);
    EXPECT_EQ(length, dump.length);
}

TEST(RegisterDump, of_19_characters_is_complete_with_or_without_newline) {
    EXPECT_TRUE(parse_register_dump("0x28000: 0x33221100").complete());
    EXPECT_TRUE(parse_register_dump("0x28000: 0x33221100\n").complete());
}

TEST(RegisterDump, gives_the_last_eight_characters_whatever_stands_before) {
    EXPECT_EQ("33221100", parse_register_dump("0x28000: 0x33221100").word());
    EXPECT_EQ("33221100", parse_register_dump("any eleven 33221100").word());
}

TEST(RegisterDump, of_18_or_20_characters_is_incomplete) {
    expect_incomplete("0x2800: 0x33221100", "0x2800: 0x33221100", 18);
    expect_incomplete("0x2800: 0x33221100\n", "0x2800: 0x33221100", 18);
    expect_incomplete("0x280000: 0x33221100", "0x280000: 0x33221100", 20);
    expect_incomplete("0x280000: 0x33221100\n", "0x280000: 0x33221100", 20);
}

TEST(RegisterDump, of_any_length_is_cut_behind_20_characters) {
    expect_incomplete(std::string(5000, 'x'), std::string(20, 'x'), 20);
}

TEST(RegisterDump, that_is_empty_is_incomplete) {
    expect_incomplete("", "", 0);
    expect_incomplete("\n", "", 0);
}

TEST(RegisterDump, ends_as_text_at_a_nul) {
    expect_incomplete("0x28000\0: 0x3322110"s, "0x28000", 19);
}

TEST(FitCommand, cuts_at_127_characters) {
    EXPECT_EQ(127U, fit_command(std::string(128, 'x')).size());
    EXPECT_EQ(127U, fit_command(std::string(127, 'x')).size());
    EXPECT_EQ("cat x", fit_command("cat x"));
}

} // namespace

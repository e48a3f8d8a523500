// SPDX-License-Identifier: Apache-2.0
#include "text.hpp"

#include <gtest/gtest.h>

namespace wivex::doctor {
namespace {

TEST(Printable, shows_what_a_terminal_would_swallow) {
    EXPECT_EQ(printable("caf\xc3\xa9\r\t\x1b[2J"), "caf\\xc3\\xa9\\x0d\\x09\\x1b[2J");
}

TEST(ShellWord, quotes_what_the_shell_would_take_apart) {
    EXPECT_EQ(shell_word("/tmp/my.cfg"), "/tmp/my.cfg");
    EXPECT_EQ(shell_word("/tmp/it's mine"), "'/tmp/it'\\''s mine'");
    EXPECT_EQ(shell_word(""), "''");
}

TEST(Trimmed, takes_blanks_tabs_and_carriage_returns_from_both_ends) {
    EXPECT_EQ(trimmed(" \ta b\r"), "a b");
    EXPECT_EQ(trimmed(" \r"), "");
}

} // namespace
} // namespace wivex::doctor

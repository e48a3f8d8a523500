// SPDX-License-Identifier: Apache-2.0
#include "common/shell.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>

namespace {

using wivex::read_from_shell;

TEST(ShellOutput, is_what_the_command_printed) {
    EXPECT_EQ("/proc/cld/athdiagpfs\n", read_from_shell("echo /proc/cld/athdiagpfs", 4096));
}

TEST(ShellOutput, is_empty_when_the_command_prints_nothing_or_fails) {
    EXPECT_EQ("", read_from_shell("exit 1", 4096));
}

TEST(ShellOutput, may_be_a_single_character) {
    EXPECT_EQ("x", read_from_shell("printf x", 4096));
}

TEST(ShellOutput, is_that_of_a_shell_named_sh) {
    EXPECT_EQ("sh\n", read_from_shell("echo $0", 4096));
}

TEST(ShellOutput, is_gathered_from_several_writes) {
    EXPECT_EQ("a\nb\n", read_from_shell("echo a; sleep 0.1; echo b", 4096));
}

TEST(ShellOutput, of_a_command_that_never_stops_printing_is_cut) {
    EXPECT_EQ("y\ny\ny", read_from_shell("yes", 5));
}

TEST(ShellOutput, leaves_standard_error_alone) {
    EXPECT_EQ("", read_from_shell("echo told >&2", 4096));
}

TEST(ShellOutput, leaves_no_child_behind) {
    read_from_shell("echo", 10);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

} // namespace

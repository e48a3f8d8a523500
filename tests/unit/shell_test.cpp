// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/shell.hpp"
#include "console_capture.hpp"
#include "scratch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;

TEST(RunShell, returns_the_wait_status_of_the_command) {
    EXPECT_EQ(run_shell("true"), 0);
    EXPECT_EQ(run_shell("exit 3"), 3 << 8);
    EXPECT_EQ(run_shell("kill -9 $$"), SIGKILL);
    EXPECT_EQ(run_shell(std::string("exit 4")), 4 << 8);
}

TEST(RunShell, returns_127_for_a_command_that_is_not_found) {
    const ConsoleCapture console;
    EXPECT_EQ(run_shell("no-such-tool-anywhere"), 127 << 8);
}

TEST(RunShell, understands_what_a_shell_understands) {
    const ScratchDirectory directory;
    EXPECT_EQ(run_shell("x=a; echo \"$x b\" >" + (directory / "out") + " && test -s " +
                        (directory / "out")),
              0);
    EXPECT_EQ(read_file(directory / "out"), "a b\n");
}

TEST(RunShell, shows_earlier_output_before_that_of_the_command) {
    ConsoleCapture console;
    print_out("unfinished ");
    run_shell("echo line");
    EXPECT_EQ(console.out(), "unfinished line\n");
}

TEST(RunShell, leaves_no_child_behind) {
    run_shell("true");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(RunShell, takes_no_notice_of_other_children) {
    const int other = fork_child([] { return 7; });
    EXPECT_EQ(run_shell("sleep 0.3; exit 3"), 3 << 8);
    EXPECT_EQ(end_of_child(other, milliseconds(1000)), 7);
}

TEST(RunShell, starts_the_command_with_default_actions_and_an_open_mask) {
    const int child = fork_child([] {
        install_interrupt_handler(exit_by_signal);
        if (run_shell("kill -INT $$; exit 1") != SIGINT) {
            return 1;
        }
        if (run_shell("kill -TERM $$; exit 1") != SIGTERM) {
            return 2;
        }
        return run_shell("grep -q '^SigBlk:.*0000000000000000$' /proc/self/status") == 0 ? 0 : 3;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(5000)), 0);
}

/// The set of signals that a command ignores; SIGHUP is its lowest bit.
unsigned long long ignored_by_a_command() {
    const auto set = read_from_shell("sed -n 's/^SigIgn:\t//p' /proc/self/status", 100);
    return std::stoull(set.value(), nullptr, 16);
}

TEST(RunShell, starts_the_command_with_no_signal_ignored_but_a_hang_up) {
    const auto usual = ignored_by_a_command();
    const int child = fork_child([&] {
        for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGCHLD, SIGALRM}) {
            ::signal(number, SIG_IGN);
        }
        return ignored_by_a_command() == (usual | 1U) ? 7 : 8;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(5000)), 7);
}

TEST(RunShell, returns_127_where_there_is_no_shell) {
    const int end = with_empty_folder("/bin", [] {
        const bool told = run_shell("exit 0") == 127 << 8 && errno == ENOENT;
        return told && !read_from_shell("echo", 10) ? 7 : 8;
    });
    EXPECT_THAT(end, testing::AnyOf(7, no_own_folder));
}

TEST(RunShell, keeps_no_memory) {
    read_from_shell("exit 0", 10);
    const auto before = ::mallinfo2().uordblks;
    for (int time = 0; time < 10; ++time) {
        read_from_shell("exit 0", 10);
    }
    EXPECT_EQ(::mallinfo2().uordblks, before);
}

class InterruptOfACommand : public testing::TestWithParam<int> {};

TEST_P(InterruptOfACommand, is_handled_at_once) {
    EXPECT_EQ(end_of_interrupted(GetParam(), [] { run_shell("exec sleep 10 >&- 2>&-"); }),
              GetParam() == SIGINT ? 50 : 60);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptOfACommand, testing::Values(SIGINT, SIGTERM),
                         [](const auto& signal) {
                             return "signal_" + std::to_string(signal.param);
                         });

TEST(RunShell, lets_an_interrupt_in_between_commands_that_never_end_to_fail) {
    const auto run_for_ever = [] {
        while (run_shell("false") != 0) {
        }
    };
    EXPECT_EQ(end_of_interrupted(SIGINT, run_for_ever), 50);
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/console.hpp"
#include "common/console_helper.hpp"
#include "common/interrupts.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <string>

namespace wivex {
namespace {

using test_support::end_of_child;
using test_support::fork_child;

constexpr std::chrono::seconds limit{5};

/// Whether a run whose console is `file` asks the helper to write there: 1 or 0.
int helper_is_asked(int file) {
    const int child = fork_child([file] {
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        console_helper::start();
        return console_helper::serves(STDOUT_FILENO) ? 1 : 0;
    });
    close(file);
    return end_of_child(child, limit);
}

void end_only_child() {
    pid_t child = -1;
    std::ifstream("/proc/thread-self/children") >> child;
    // Where the file is in memory there is no helper.
    if (child > 1) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
}

void ignore_signal(int /*signal*/) {}

TEST(ConsoleHelper, is_not_asked_for_a_file_in_memory) {
    EXPECT_EQ(helper_is_asked(memfd_create("console", MFD_CLOEXEC)), 0);
}

TEST(ConsoleHelper, is_not_asked_for_a_device) {
    EXPECT_EQ(helper_is_asked(open("/dev/null", O_WRONLY | O_CLOEXEC)), 0);
}

TEST(ConsoleHelper, that_was_killed_leaves_the_next_line_whole) {
    // Beside the build, which is seldom in memory.
    std::array<char, 24> path{"console-helper.XXXXXX"};
    const int file = mkstemp(path.data());
    const int child = fork_child([file] {
        dup2(file, STDOUT_FILENO);
        install_interrupt_handler(ignore_signal);
        shield_from_hanging_files();
        print_out("one line\n");
        flush_out();
        end_only_child();
        print_out("another line\n");
        flush_out();
        return 0;
    });
    close(file);
    EXPECT_EQ(end_of_child(child, limit), 0);
    EXPECT_EQ(test_support::read_file(path.data()), "one line\nanother line\n");
    unlink(path.data());
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// A child that could not be made interruptible is not started at all.

#include "children.hpp"
#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/shell.hpp"
#include "console_capture.hpp"

#include <gtest/gtest.h>
#include <spawn.h>

#include <cerrno>
#include <chrono>
#include <csignal>

namespace {

bool out_of_memory = false;

} // namespace

// Stands in front of the C library's own for the whole program.
extern "C" int posix_spawnattr_setsigmask(posix_spawnattr_t* attributes,
                                          const sigset_t* mask) noexcept {
    if (out_of_memory) {
        return ENOMEM;
    }
    attributes->__ss = *mask;
    return 0;
}

namespace wivex {
namespace {

class SpawnAttributesMissing : public ::testing::Test {
protected:
    void SetUp() override {
        out_of_memory = true;
    }
    void TearDown() override {
        out_of_memory = false;
    }
};

TEST_F(SpawnAttributesMissing, is_reported_like_any_child_that_cannot_be_started) {
    EXPECT_EQ(run_shell("exit 0"), -1);
    EXPECT_EQ(read_from_shell("echo text", 10), std::nullopt);
    EXPECT_EQ(errno, ENOMEM);
}

TEST_F(SpawnAttributesMissing, lets_an_interrupt_in_all_the_same) {
    const int child = test_support::fork_child([] {
        install_interrupt_handler(test_support::exit_by_signal);
        ::raise(SIGINT);
        run_shell("exit 0");
        return 7;
    });
    EXPECT_EQ(test_support::end_of_child(child, std::chrono::milliseconds(2000)), 50);
}

TEST_F(SpawnAttributesMissing, leaves_nothing_of_what_was_printed_before_unwritten) {
    test_support::ConsoleCapture console;
    print_out("one ");
    run_shell("exit 0");
    EXPECT_EQ(console.out_without_flush(), "one ");
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// When SIGINT and SIGTERM are let in, and when they are held back.

#include "children.hpp"
#include "common/interrupts.hpp"
#include "common/shell.hpp"
#include "common/waiting.hpp"
#include "pipe.hpp"
#include "scratch.hpp"

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;

/// How a child ends that repeats `wait` for ever, when it is interrupted.
int interrupted_while(int signal_number, const std::function<void()>& wait) {
    return end_of_interrupted(signal_number, [&wait] {
        for (;;) {
            wait();
        }
    });
}

TEST(Interrupts, are_let_in_while_waiting_for_input) {
    const Pipe pipe;
    EXPECT_EQ(interrupted_while(SIGINT, [&] { wait_readable(pipe.reader(), -1); }), 50);
    EXPECT_EQ(interrupted_while(SIGTERM, [&] { wait_readable(pipe.reader(), 60000); }), 60);
}

TEST(Interrupts, are_let_in_when_the_input_is_never_empty) {
    const Pipe pipe;
    pipe.write();
    EXPECT_EQ(interrupted_while(SIGINT, [&] { wait_readable(pipe.reader(), -1); }), 50);
    EXPECT_EQ(interrupted_while(SIGTERM, [&] { wait_readable(pipe.reader(), 0); }), 60);
    EXPECT_EQ(interrupted_while(SIGINT, [&] { wait_readable_or_next_second(pipe.reader()); }), 50);
}

TEST(Interrupts, are_let_in_while_waiting_for_data) {
    const Pipe pipe;
    std::array<char, 1> data{};
    EXPECT_EQ(interrupted_while(SIGINT, [&] { wait_for_data(pipe.reader(), data); }), 50);
}

TEST(Interrupts, are_let_in_while_waiting_for_a_driver) {
    const Pipe pipe;
    int length = 0;
    const auto ask = [&] { wait_for_driver(pipe.reader(), FIONREAD, &length); };
    EXPECT_EQ(interrupted_while(SIGTERM, ask), 60);
}

TEST(Interrupts, are_let_in_while_waiting_for_the_clock) {
    const Pipe pipe;
    const auto wait_many_seconds = [&] {
        for (int second = 0; second < 60; ++second) {
            wait_readable_or_next_second(pipe.reader());
        }
    };
    EXPECT_EQ(interrupted_while(SIGINT, wait_many_seconds), 50);
    EXPECT_EQ(interrupted_while(SIGINT, [] { wait_for(60); }), 50);
    EXPECT_EQ(interrupted_while(SIGTERM, [] { wait_for(0, 60'000'000); }), 60);
}

TEST(Interrupts, are_let_in_by_a_wait_for_no_time) {
    EXPECT_EQ(interrupted_while(SIGINT, [] { wait_for(0); }), 50);
}

TEST(Interrupts, are_let_in_while_waiting_for_a_child) {
    EXPECT_EQ(interrupted_while(SIGINT,
                                [] {
                                    wait_for_child(fork_child([] {
                                        ::alarm(1); // default action: the end
                                        ::pause();
                                        return 0;
                                    }));
                                }),
              50);
}

TEST(Interrupts, are_held_back_while_the_program_computes) {
    const auto body = [] {
        ::raise(SIGINT);
        ::raise(SIGTERM);
        const Stopwatch watch;
        while (watch.elapsed() < milliseconds(100)) {
        }
        return 7;
    };
    EXPECT_EQ(end_under_the_handler(body), 7);
}

TEST(Interrupts, are_let_in_on_request) {
    const auto body = [] {
        let_interrupts_in();
        ::raise(SIGINT);
        let_interrupts_in();
        return 7;
    };
    EXPECT_EQ(end_under_the_handler(body), 50);
}

TEST(Interrupts, are_held_back_again_after_every_way_of_letting_them_in) {
    const std::vector<std::function<void()>> ways{
        [] { let_interrupts_in(); },
        [] { const InterruptsOpen open; },
        [] { wait_for(0, 1000); },
        [] { wait_readable(STDIN_FILENO, 0); },
        [] { wait_for_child(fork_child([] { return 0; })); },
        [] { wait_for_data(STDIN_FILENO, {}); },
        [] { wait_for_driver(STDIN_FILENO, 0, nullptr); },
        [] { run_shell("true"); },
    };
    for (const auto& way : ways) {
        const auto body = [&] {
            way();
            ::raise(SIGINT);
            ::raise(SIGTERM);
            return 7;
        };
        EXPECT_EQ(end_under_the_handler(body), 7);
    }
}

TEST(Interrupts, have_their_default_actions_before_the_handler_is_installed) {
    const int child = fork_child([] {
        ::raise(SIGINT);
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 128 + SIGINT);
}

TEST(Interrupts, are_not_let_in_any_more_once_sealed) {
    const auto body = [] {
        if (interrupts_sealed()) {
            return 1;
        }
        seal_interrupts(SIGINT);
        ::raise(SIGINT);
        ::raise(SIGTERM);
        let_interrupts_in();
        wait_for(0, 1000);
        return interrupts_sealed() ? 7 : 2;
    };
    EXPECT_EQ(end_under_the_handler(body), 7);
}

TEST(Interrupts, that_come_during_the_handler_wait_for_ever) {
    const int child = fork_child([] {
        install_interrupt_handler([](int) {
            static volatile std::sig_atomic_t runs = 0;
            runs = runs + 1;
            ::raise(SIGINT);
            ::raise(SIGTERM);
            ::_exit(7 + runs);
        });
        ::raise(SIGTERM);
        let_interrupts_in();
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 8);
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The alarm behind a call on a file: when it rings, and what is left of it.

#include "children.hpp"
#include "common/files.hpp"
#include "common/interrupts.hpp"
#include "common/signal_set.hpp"
#include "odd_calls.hpp"
#include "scratch.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>

namespace wivex {
namespace {

using namespace test_support;

unsigned flags_of_the_alarm() {
    struct sigaction alarm {};
    ::sigaction(SIGALRM, nullptr, &alarm);
    return static_cast<unsigned>(alarm.sa_flags) & (SA_SIGINFO | SA_RESTART);
}

suseconds_t microseconds_between_the_rings() {
    itimerval time{};
    ::getitimer(ITIMER_REAL, &time);
    return time.it_interval.tv_usec;
}

int set_but_not_unset(const itimerval& time) {
    errno = EINVAL;
    return time.it_value.tv_usec == 0 ? -1 : 0;
}

TEST(CallAlarm, that_lets_interrupts_in_rings_once_and_has_the_call_go_on) {
    const auto look = [] {
        const InterruptsWhenStuck scope;
        return flags_of_the_alarm() == (SA_SIGINFO | SA_RESTART) &&
                       microseconds_between_the_rings() == 0
                   ? 7
                   : 8;
    };
    EXPECT_EQ(end_under_the_handler(look), 7);
}

TEST(CallAlarm, that_cuts_a_call_short_rings_every_tenth_of_a_second) {
    const auto look = [] {
        const CallCutShort scope;
        return flags_of_the_alarm() == SA_SIGINFO && microseconds_between_the_rings() == 100'000
                   ? 7
                   : 8;
    };
    EXPECT_EQ(end_under_the_handler(look), 7);
}

TEST(CallAlarm, that_cannot_be_unset_ends_no_run) {
    const auto use_a_file_and_wait = [] {
        OddCalls calls;
        calls.setitimer = set_but_not_unset;
        can_be_read("/dev/null");
        ::raise(SIGALRM);
        return 7;
    };
    EXPECT_EQ(end_under_the_handler(use_a_file_and_wait), 7);
}

TEST(CallAlarm, that_cannot_be_unset_leaves_the_reason_of_the_call) {
    const auto use_no_file = [] {
        OddCalls calls;
        calls.setitimer = set_but_not_unset;
        open_file("/no such file", 0);
        return errno;
    };
    EXPECT_EQ(end_under_the_handler(use_no_file), ENOENT);
}

TEST(CallAlarm, rings_in_a_run_that_was_started_with_alarms_held_back) {
    const ScratchDirectory directory;
    const std::string pipe = directory / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int child = fork_child([&] {
        const sigset_t alarm = signal_set({SIGALRM});
        ::sigprocmask(SIG_BLOCK, &alarm, nullptr);
        install_interrupt_handler(exit_by_signal);
        ::raise(SIGINT);
        can_be_read(pipe.c_str());
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 50);
}

} // namespace
} // namespace wivex

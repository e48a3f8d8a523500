// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/console.hpp"
#include "common/unique_fd.hpp"
#include "common/waiting.hpp"
#include "console_capture.hpp"
#include "odd_calls.hpp"
#include "pipe.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

TEST(WaitReadable, returns_1_at_once_when_there_is_input) {
    const Pipe pipe;
    pipe.write();
    const Stopwatch watch;
    EXPECT_EQ(wait_readable(pipe.reader(), 10000), 1);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
}

TEST(WaitReadable, returns_1_when_the_other_end_is_closed) {
    Pipe pipe;
    pipe.close_writer();
    EXPECT_EQ(wait_readable(pipe.reader(), 10000), 1);
}

TEST(WaitReadable, returns_0_after_the_timeout) {
    const Pipe pipe;
    const Stopwatch watch;
    EXPECT_EQ(wait_readable(pipe.reader(), 400), 0);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(399)), Le(milliseconds(1400))));
}

TEST(WaitReadable, only_looks_with_a_timeout_of_0) {
    const Pipe pipe;
    EXPECT_EQ(wait_readable(pipe.reader(), 0), 0);
    pipe.write();
    EXPECT_EQ(wait_readable(pipe.reader(), 0), 1);
}

TEST(WaitReadable, waits_without_limit_for_a_negative_timeout) {
    const Pipe pipe;
    const std::jthread writer([&] {
        std::this_thread::sleep_for(milliseconds(1500));
        pipe.write();
    });
    EXPECT_EQ(wait_readable(pipe.reader(), -1), 1);
}

TEST(WaitReadable, wakes_at_once_when_input_comes) {
    const Pipe pipe;
    std::chrono::steady_clock::time_point written;
    std::jthread writer([&] {
        std::this_thread::sleep_for(milliseconds(200));
        written = std::chrono::steady_clock::now();
        pipe.write();
    });
    EXPECT_EQ(wait_readable(pipe.reader(), 5000), 1);
    const auto woken = std::chrono::steady_clock::now();
    writer.join();
    EXPECT_LT(woken - written, milliseconds(500));
}

TEST(WaitReadable, takes_a_descriptor_above_1023) {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 4096);
    ::setrlimit(RLIMIT_NOFILE, &limit);
    const Pipe pipe;
    const UniqueFd high(::fcntl(pipe.reader(), F_DUPFD_CLOEXEC, 2000));
    ASSERT_GE(high.get(), 2000);
    EXPECT_EQ(wait_readable(high.get(), 50), 0);
    pipe.write();
    EXPECT_EQ(wait_readable(high.get(), 50), 1);
}

TEST(WaitReadable, fails_for_a_closed_descriptor) {
    const int fd = ::dup(STDIN_FILENO);
    ::close(fd);
    EXPECT_EQ(wait_readable(fd, 50), -1);
    EXPECT_EQ(errno, EBADF);
}

TEST(WaitReadable, flushes_standard_output_before_it_waits) {
    ConsoleCapture console;
    const Pipe pipe;
    print_out("question? ");
    wait_readable(pipe.reader(), 0);
    EXPECT_EQ(console.out_without_flush(), "question? ");
}

TEST(WaitReadableOrNextSecond, ends_at_once_with_input) {
    const Pipe pipe;
    pipe.write();
    const Stopwatch watch;
    wait_readable_or_next_second(pipe.reader());
    EXPECT_LT(watch.elapsed(), milliseconds(900));
}

TEST(WaitReadableOrNextSecond, flushes_standard_output_first) {
    ConsoleCapture console;
    const Pipe pipe;
    pipe.write();
    print_out("wait... ");
    wait_readable_or_next_second(pipe.reader());
    EXPECT_EQ(console.out_without_flush(), "wait... ");
}

TEST(WaitReadableOrNextSecond, ends_when_the_wall_clock_shows_the_next_second) {
    const Pipe pipe;
    for (int i = 0; i < 3; ++i) {
        timespec before{};
        ::clock_gettime(CLOCK_REALTIME, &before);
        wait_readable_or_next_second(pipe.reader());
        timespec after{};
        ::clock_gettime(CLOCK_REALTIME, &after);
        EXPECT_EQ(after.tv_sec, before.tv_sec + 1);
        EXPECT_LT(after.tv_nsec, 100'000'000);
    }
}

TEST(WaitReadableOrNextSecond, rests_a_moment_on_a_descriptor_that_reports_nothing_but_an_error) {
    const int fd = ::dup(STDIN_FILENO);
    ::close(fd);
    const Stopwatch watch;
    wait_readable_or_next_second(fd);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(10)), Le(milliseconds(500))));
}

/// A signal with a handler of its own comes once, 100 ms from now.
void send_alarm_soon() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    ::sigaction(SIGALRM, &action, nullptr);
    const itimerval soon{{}, {0, 100'000}};
    ::setitimer(ITIMER_REAL, &soon, nullptr);
}

TEST(WaitFor, goes_on_after_a_signal_that_ends_nothing) {
    send_alarm_soon();
    const Stopwatch watch;
    wait_for(0, 400'000);
    EXPECT_GE(watch.elapsed(), milliseconds(399));
}

TEST(WaitForChild, goes_on_after_a_signal_that_ends_nothing) {
    const int child = fork_child([] {
        std::this_thread::sleep_for(milliseconds(400));
        return 9;
    });
    send_alarm_soon();
    EXPECT_EQ(wait_for_child(child), 9 << 8);
}

TEST(WaitFor, sleeps_the_given_time) {
    const Stopwatch watch;
    wait_for(1, 200'000);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(1199)), Le(milliseconds(2500))));
}

TEST(WaitFor, sleeps_all_microseconds_below_a_second) {
    const Stopwatch watch;
    wait_for(0, 999'999);
    EXPECT_GE(watch.elapsed(), milliseconds(999));
}

TEST(WaitFor, takes_a_million_microseconds_for_a_second) {
    const Stopwatch watch;
    wait_for(0, 1'000'000);
    EXPECT_GE(watch.elapsed(), milliseconds(999));
}

TEST(WaitFor, does_not_sleep_for_nothing_or_less) {
    const Stopwatch watch;
    wait_for(0);
    wait_for(-5);
    wait_for(0, -5);
    wait_for(-1, -1);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
}

TEST(WaitFor, flushes_standard_output_first) {
    ConsoleCapture console;
    print_out("wait... ");
    wait_for(0, 1000);
    EXPECT_EQ(console.out_without_flush(), "wait... ");
}

TEST(WaitForData, flushes_standard_output_first) {
    ConsoleCapture console;
    const Pipe pipe;
    pipe.write();
    print_out("wait... ");
    std::array<char, 1> data{};
    EXPECT_EQ(wait_for_data(pipe.reader(), data), 1);
    EXPECT_EQ(console.out_without_flush(), "wait... ");
}

TEST(WaitForDriver, flushes_standard_output_first) {
    ConsoleCapture console;
    const Pipe pipe;
    print_out("wait... ");
    int length = -1;
    EXPECT_EQ(wait_for_driver(pipe.reader(), FIONREAD, &length), 0);
    EXPECT_EQ(console.out_without_flush(), "wait... ");
}

TEST(WaitForChild, returns_the_wait_status) {
    EXPECT_EQ(wait_for_child(fork_child([] {
                  std::this_thread::sleep_for(milliseconds(100));
                  return 9;
              })),
              9 << 8);
    EXPECT_EQ(wait_for_child(fork_child([] {
                  ::raise(SIGKILL);
                  return 0;
              })),
              SIGKILL);
}

TEST(WaitForChild, flushes_standard_output_first) {
    ConsoleCapture console;
    print_out("wait... ");
    wait_for_child(fork_child([] { return 0; }));
    EXPECT_EQ(console.out_without_flush(), "wait... ");
}

TEST(WaitForChild, returns_minus_1_when_there_is_none) {
    EXPECT_EQ(wait_for_child(::getppid()), -1);
}

TEST(Waiting, costs_next_to_no_processor_time) {
    const Pipe pipe;
    const auto before = processor_time();
    wait_readable(pipe.reader(), 2000);
    wait_readable_or_next_second(pipe.reader());
    wait_readable_or_next_second(pipe.reader());
    wait_for(1);
    EXPECT_LT(processor_time() - before, milliseconds(10));
}

TEST(WaitFor, sleeps_what_is_left_after_a_signal_that_ends_nothing) {
    std::vector<std::time_t> sleeps;
    OddCalls calls;
    calls.nanosleep = [&sleeps](const timespec& duration, timespec& left) {
        sleeps.push_back(duration.tv_sec);
        left = {duration.tv_sec - 20, 0};
        errno = EINTR;
        return left.tv_sec > 0 ? -1 : 0;
    };
    wait_for(60);
    EXPECT_THAT(sleeps, ElementsAre(60, 40, 20));
}

TEST(WaitUntilExpired, looks_at_the_clock_once_a_second) {
    std::time_t now = 1000;
    int looks = 0;
    OddCalls calls;
    calls.time = [&] { return ++looks < 100 ? now : 2000; };
    calls.poll = [&now](const pollfd&, int) {
        ++now;
        return 0;
    };
    DeadlineTimer timer;
    timer.start(30);
    wait_until_expired(timer);
    EXPECT_EQ(looks, 1 + 31);
}

} // namespace
} // namespace wivex

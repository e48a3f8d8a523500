// SPDX-License-Identifier: Apache-2.0
#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/shell.hpp"
#include "common/unique_fd.hpp"
#include "common/waiting.hpp"
#include "console_capture.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

namespace wivex {
namespace {

using std::chrono::milliseconds;
using test_support::ConsoleCapture;
using test_support::end_of_child;
using test_support::fork_child;
using test_support::Gate;
using test_support::processor_time;
using test_support::Stopwatch;
using ::testing::AllOf;
using ::testing::Ge;
using ::testing::Le;

class Pipe {
public:
    Pipe() {
        int ends[2]{};
        if (::pipe2(ends, O_CLOEXEC) == 0) {
            in_.reset(ends[1]);
            out_.reset(ends[0]);
        }
    }
    int reader() const {
        return out_.get();
    }
    void write() const {
        EXPECT_EQ(::write(in_.get(), "x", 1), 1);
    }
    void close_writer() {
        in_.reset();
    }

private:
    UniqueFd in_;
    UniqueFd out_;
};

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

// ---- interrupts --------------------------------------------------------------------------------

[[noreturn]] void exit_by_signal(int signal_number) {
    ::_exit(signal_number == SIGINT ? 50 : 60);
}

/// Runs `wait` again and again in a child that holds interrupts back, sends it `signal_number` and
/// returns how the child ended.
int interrupted_while(int signal_number, const std::function<void()>& wait) {
    const Gate ready;
    const int child = fork_child([&] {
        install_interrupt_handler(exit_by_signal);
        ready.open();
        for (;;) {
            wait();
        }
        return 1;
    });
    ready.wait();
    std::this_thread::sleep_for(milliseconds(100));
    ::kill(child, signal_number);
    return end_of_child(child, milliseconds(1500));
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
    const int child = fork_child([] {
        install_interrupt_handler(exit_by_signal);
        ::raise(SIGINT);
        ::raise(SIGTERM);
        const Stopwatch watch;
        while (watch.elapsed() < milliseconds(100)) {
        }
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 7);
}

TEST(Interrupts, are_let_in_on_request) {
    const int child = fork_child([] {
        install_interrupt_handler(exit_by_signal);
        let_interrupts_in();
        ::raise(SIGINT);
        let_interrupts_in();
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 50);
}

TEST(Interrupts, are_held_back_again_after_every_way_of_letting_them_in) {
    const std::vector<std::function<void()>> ways{
        [] { let_interrupts_in(); },
        [] { const InterruptsOpen open; },
        [] { wait_for(0, 1000); },
        [] { wait_readable(STDIN_FILENO, 0); },
        [] { wait_for_child(fork_child([] { return 0; })); },
        [] { run_shell("true"); },
    };
    for (const auto& way : ways) {
        const int child = fork_child([&] {
            install_interrupt_handler(exit_by_signal);
            way();
            ::raise(SIGINT);
            ::raise(SIGTERM);
            return 7;
        });
        EXPECT_EQ(end_of_child(child, milliseconds(2000)), 7);
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
    const int child = fork_child([] {
        install_interrupt_handler(exit_by_signal);
        if (interrupts_sealed()) {
            return 1;
        }
        seal_interrupts(SIGINT);
        ::raise(SIGINT);
        ::raise(SIGTERM);
        let_interrupts_in();
        wait_for(0, 1000);
        return interrupts_sealed() ? 7 : 2;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 7);
}

TEST(Interrupts, that_come_during_the_handler_wait_for_ever) {
    const int child = fork_child([] {
        install_interrupt_handler([](int) {
            ::raise(SIGINT);
            ::raise(SIGTERM);
            ::_exit(8);
        });
        ::raise(SIGTERM);
        let_interrupts_in();
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 8);
}

} // namespace
} // namespace wivex

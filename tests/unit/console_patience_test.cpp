// SPDX-License-Identifier: Apache-2.0
// How long the termination handler waits for a reader of the console.

#include "children.hpp"
#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "disk_file.hpp"
#include "odd_calls.hpp"
#include "pipe.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

constexpr milliseconds longest_try{60'000};
constexpr milliseconds tenth{100};

/// More than a pipe of one page takes, and many times what is written at once.
const std::string long_text(300'000, 'x');

void print_long_text() {
    print_out("%s", long_text.c_str());
    flush_out();
}

/// A handler that prints; its streams are a pipe of one page.
class PrintingHandler {
public:
    explicit PrintingHandler(const std::function<void()>& print = print_long_text, int flags = 0) {
        fcntl(pipe_.writer(), F_SETPIPE_SZ, 4096);
        fcntl(pipe_.writer(), F_SETFL, flags);
        child_ = fork_child([&] {
            dup2(pipe_.writer(), STDOUT_FILENO);
            dup2(pipe_.writer(), STDERR_FILENO);
            pipe_.close_writer();
            seal_interrupts(SIGINT);
            const Stopwatch watch;
            print();
            return static_cast<int>(watch.elapsed() / tenth);
        });
        pipe_.close_writer();
    }

    /// After a pause, takes what fits a pipe of one page.
    std::size_t take_after(milliseconds pause) {
        std::this_thread::sleep_for(pause);
        std::array<char, 4096> page{};
        const ssize_t length = read(pipe_.reader(), page.data(), page.size());
        return length > 0 ? static_cast<std::size_t>(length) : 0;
    }

    std::size_t take_rest() {
        std::size_t sum = 0;
        for (std::size_t length = 1; length > 0; sum += length) {
            length = take_after(milliseconds(0));
        }
        return sum;
    }

    /// How long the handler printed, to a tenth of a second.
    milliseconds time_to_its_end() const {
        return end_of_child(child_, longest_try) * tenth;
    }

private:
    Pipe pipe_;
    int child_ = -1;
};

/// The times of three tries: a busy machine delays some.
std::array<milliseconds, 3> three_times(const std::function<milliseconds()>& one_try) {
    return {one_try(), one_try(), one_try()};
}

TEST(ConsolePatience, ends_when_nothing_was_taken_for_two_seconds) {
    const auto times = three_times([] { return PrintingHandler().time_to_its_end(); });
    EXPECT_THAT(times, Each(Ge(milliseconds(1900))));
    EXPECT_THAT(times, Contains(Le(milliseconds(3700))));
}

TEST(ConsolePatience, is_one_for_both_streams) {
    const auto times = three_times([] {
        const PrintingHandler handler([] {
            print_long_text();
            print_err("%s", long_text.c_str());
        });
        return handler.time_to_its_end();
    });
    EXPECT_THAT(times, Each(Ge(milliseconds(1900))));
    EXPECT_THAT(times, Contains(Le(milliseconds(3700))));
}

TEST(ConsolePatience, with_a_slow_reader_ends_ten_seconds_after_the_first_wait) {
    const auto times = three_times([] {
        PrintingHandler handler;
        while (handler.take_after(milliseconds(300)) > 0) {
        }
        return handler.time_to_its_end();
    });
    EXPECT_THAT(times, Contains(AllOf(Ge(milliseconds(9500)), Le(milliseconds(12'500)))));
}

TEST(ConsolePatience, is_as_long_for_a_pipe_that_does_not_block) {
    const auto times = three_times([] {
        PrintingHandler handler(print_long_text, O_NONBLOCK);
        const std::size_t taken = handler.take_after(milliseconds(500)) + handler.take_rest();
        const milliseconds time = handler.time_to_its_end();
        return taken == 300'000U ? time : longest_try;
    });
    EXPECT_THAT(times, Contains(Le(milliseconds(9000))));
}

TEST(ConsolePatience, begins_anew_with_each_text_that_the_helper_has_written) {
    const DiskFile file;
    if (!file.may_hang()) {
        GTEST_SKIP() << "the test program stands in memory";
    }
    const int child = fork_child([&] {
        OddCalls slow;
        slow.write = [](int fd, std::size_t) {
            std::this_thread::sleep_for(milliseconds(300));
            return pwrite(fd, "x", 1, lseek(fd, 0, SEEK_END));
        };
        dup2(file.fd(), STDOUT_FILENO);
        shield_from_hanging_files();
        seal_interrupts(SIGINT);
        for (int text = 0; text < 10; ++text) {
            print_out("x");
            flush_out();
        }
        return 0;
    });
    EXPECT_EQ(end_of_child(child, longest_try), 0);
    EXPECT_EQ(file.content(), "xxxxxxxxxx");
}

} // namespace
} // namespace wivex

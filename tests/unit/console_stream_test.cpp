// SPDX-License-Identifier: Apache-2.0
// How often a stream is tried, and what it waits for in between.

#include "children.hpp"
#include "common/console_helper.hpp"
#include "common/console_stream.hpp"
#include "disk_file.hpp"
#include "odd_calls.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;
using Waiting = ConsoleStream::Waiting;

/// Standard output as a test makes it: each write answers as it is told, and there seems to be
/// room.
class AnsweredStream {
public:
    explicit AnsweredStream(std::vector<int> answers) : answers_(std::move(answers)) {
        calls_.write = [this](int, std::size_t) { return next_answer(); };
        calls_.poll = [this](const pollfd& descriptor, int timeout_ms) {
            waits_.push_back((descriptor.fd < 0 ? "pause of " : "wait of ") +
                             std::to_string(timeout_ms));
            return descriptor.fd < 0 ? 0 : 1;
        };
    }

    /// Writes the text "text" as often as there are answers.
    std::vector<std::size_t> write_all(Waiting waiting) {
        std::vector<std::size_t> taken;
        while (next_ < answers_.size()) {
            taken.push_back(stream_.write_some("text", waiting));
        }
        return taken;
    }

    const std::vector<std::string>& waits() const {
        return waits_;
    }

private:
    /// Below 0 the number of an error.
    ssize_t next_answer() {
        const int answer = answers_.at(next_++);
        errno = answer < 0 ? -answer : errno;
        return answer < 0 ? -1 : answer;
    }

    std::vector<int> answers_;
    std::size_t next_ = 0;
    std::vector<std::string> waits_;
    ConsoleStream stream_{STDOUT_FILENO};
    OddCalls calls_;
};

TEST(ConsoleStream, keeps_a_text_that_is_not_taken_this_time) {
    AnsweredStream stream({0, -EAGAIN, -EINTR, 3, 4});
    errno = 0;
    EXPECT_THAT(stream.write_all(Waiting::long_as_it_takes), ElementsAre(0, 0, 0, 3, 4));
}

TEST(ConsoleStream, drops_a_text_that_cannot_be_written) {
    AnsweredStream stream({-EIO, 4});
    EXPECT_THAT(stream.write_all(Waiting::long_as_it_takes), ElementsAre(4, 4));
}

TEST(ConsoleStream, is_looked_at_before_it_is_written_to) {
    AnsweredStream stream({4, 4});
    stream.write_all(Waiting::long_as_it_takes);
    EXPECT_THAT(stream.waits(), ElementsAre("wait of 0", "wait of 0"));
}

TEST(ConsoleStream, is_waited_for_after_a_write_that_was_not_taken_whole) {
    AnsweredStream stream({3, -EINTR, 4, 4});
    stream.write_all(Waiting::long_as_it_takes);
    EXPECT_THAT(stream.waits(), ElementsAre("wait of 0", "wait of -1", "wait of -1", "wait of 0"));
}

TEST(ConsoleStream, is_given_a_pause_when_it_took_nothing_and_seems_to_have_room) {
    AnsweredStream stream({0, -EAGAIN, 4, 4});
    stream.write_all(Waiting::long_as_it_takes);
    EXPECT_THAT(stream.waits(), ElementsAre("wait of 0", "pause of 10", "wait of -1", "pause of 10",
                                            "wait of -1", "wait of 0"));
}

TEST(ConsoleStream, is_tried_at_once_where_nobody_waits) {
    AnsweredStream stream({3, 4});
    EXPECT_THAT(stream.write_all(Waiting::not_at_all), ElementsAre(3, 4));
    EXPECT_THAT(stream.waits(), ElementsAre("wait of 0", "wait of 0"));
}

/// The waits of a handler that writes with these answers, without their lengths: what is left of
/// the patience varies.
std::string pauses_of_a_handler(const std::vector<int>& answers) {
    std::string pauses;
    AnsweredStream stream(answers);
    stream.write_all(Waiting::patiently);
    for (const std::string& wait : stream.waits()) {
        pauses += wait.substr(0, wait.rfind(' ')) + ", ";
    }
    return pauses;
}

/// Runs it in a process of its own: the patience is one for the whole process.
void expect_pauses_of_a_handler(const std::vector<int>& answers, const std::string& expected) {
    const int child = fork_child([&] { return pauses_of_a_handler(answers) == expected ? 7 : 8; });
    EXPECT_EQ(end_of_child(child, std::chrono::seconds(5)), 7);
}

TEST(ConsoleStream, gets_a_pause_of_the_handler_only_when_it_took_nothing) {
    expect_pauses_of_a_handler({3, 4, 4}, "wait of, wait of, wait of, ");
    expect_pauses_of_a_handler({0, -EAGAIN, 4}, "wait of, pause of, wait of, pause of, wait of, ");
}

class ServedStream : public testing::Test {
protected:
    void SetUp() override {
        if (!file_.may_hang()) {
            GTEST_SKIP() << "the test program stands in memory";
        }
    }

    /// How `body` ends in a run whose standard output the helper writes.
    int end_with_helper(const std::function<int()>& body) {
        const int child = fork_child([&] {
            dup2(file_.fd(), STDOUT_FILENO);
            console_helper::start();
            return body();
        });
        return end_of_child(child, std::chrono::seconds(5));
    }

    static void wait_for_the_word() {
        pollfd word{console_helper::descriptor(), POLLIN, 0};
        really_poll(word, 5000);
    }

    DiskFile file_;
};

TEST_F(ServedStream, is_waited_for_once_when_the_helper_is_busy) {
    const auto write_twice = [] {
        ConsoleStream stream(STDOUT_FILENO);
        std::vector<int> waits;
        OddCalls calls;
        calls.poll = [&waits](pollfd& descriptor, int timeout_ms) {
            waits.push_back(timeout_ms);
            return really_poll(descriptor, timeout_ms);
        };
        stream.write_some("one", Waiting::long_as_it_takes);
        stream.write_some("two", Waiting::long_as_it_takes);
        return waits == std::vector<int>{-1} ? 7 : 8;
    };
    EXPECT_EQ(end_with_helper(write_twice), 7);
}

TEST_F(ServedStream, goes_on_without_a_wait_when_the_helper_has_written) {
    const auto write_twice = [] {
        ConsoleStream stream(STDOUT_FILENO);
        stream.write_some("one", Waiting::not_at_all);
        wait_for_the_word();
        return stream.write_some("two", Waiting::not_at_all) == 3 ? 7 : 8;
    };
    EXPECT_EQ(end_with_helper(write_twice), 7);
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/files.hpp"
#include "common/interrupts.hpp"
#include "odd_calls.hpp"
#include "pipe.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <string>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class Files : public testing::Test {
protected:
    /// What a buffer of this size receives, call by call.
    template <std::size_t size>
    std::vector<std::string> lines_of(const std::string& content) const {
        FileReader file(open_file(directory_.file("read", content).c_str(), O_RDONLY));
        std::vector<std::string> lines;
        for (std::array<char, size> line{}; file.read_line(line);) {
            lines.emplace_back(line.data());
        }
        return lines;
    }

    ScratchDirectory directory_;
};

TEST_F(Files, are_read_line_by_line) {
    EXPECT_THAT(lines_of<16>("one\n\nthree"), ElementsAre("one\n", "\n", "three"));
}

TEST_F(Files, give_a_line_that_is_too_long_in_pieces) {
    EXPECT_THAT(lines_of<5>("abcdef\n"), ElementsAre("abcd", "ef\n"));
}

TEST_F(Files, of_a_single_character_are_read) {
    EXPECT_THAT(lines_of<16>("x"), ElementsAre("x"));
}

TEST_F(Files, may_have_zeros_in_their_lines) {
    const std::string content("a\0b\n", 4);
    FileReader file(open_file(directory_.file("read", content).c_str(), O_RDONLY));
    std::array<char, 16> line{};
    EXPECT_TRUE(file.read_line(line));
    EXPECT_EQ(std::string(line.data(), 4), content);
}

TEST_F(Files, end_though_a_call_before_was_interrupted) {
    FileReader file(open_file(directory_.file("read", "").c_str(), O_RDONLY));
    errno = EINTR;
    EXPECT_EQ(file.get(), -1);
}

TEST_F(Files, are_read_on_after_a_signal_that_ends_nothing) {
    static int writer = -1;
    Pipe pipe;
    writer = pipe.writer();
    struct sigaction action {};
    action.sa_handler = [](int) { [[maybe_unused]] const auto count = ::write(writer, "x", 1); };
    ::sigaction(SIGALRM, &action, nullptr);
    const itimerval soon{{}, {0, 50'000}};
    ::setitimer(ITIMER_REAL, &soon, nullptr);
    FileReader file{UniqueFd(::dup(pipe.reader()))};
    EXPECT_EQ(file.get(), 'x');
    ::signal(SIGALRM, SIG_DFL);
}

TEST_F(Files, that_are_new_can_be_read_and_written_by_all_whom_the_mask_does_not_forbid_it) {
    const mode_t mask = ::umask(0);
    open_to_write((directory_ / "new").c_str());
    ::umask(mask);
    struct stat status {};
    ASSERT_EQ(::stat((directory_ / "new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0666U);
}

TEST_F(Files, that_cannot_be_read_have_no_lines) {
    FileReader folder(open_file(directory_.path().c_str(), O_RDONLY));
    ASSERT_TRUE(folder);
    std::array<char, 16> line{};
    EXPECT_FALSE(folder.read_line(line));
    EXPECT_EQ(folder.get(), -1);
}

TEST_F(Files, have_no_error_before_they_are_read) {
    const FileReader file(open_file(directory_.file("read", "x").c_str(), O_RDONLY));
    EXPECT_EQ(file.error(), 0);
}

TEST_F(Files, are_written_whole_however_long_they_are) {
    FileWriter file(open_to_write((directory_ / "out").c_str()));
    std::string expected;
    for (int number = 0; number < 5000; ++number) {
        file.print("%d,", number);
        expected += std::to_string(number) + ",";
    }
    file.put(std::string(10'000, 'x'));
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(read_file(directory_ / "out"), expected + std::string(10'000, 'x'));
}

TEST_F(Files, take_a_single_character) {
    FileWriter file(open_to_write((directory_ / "out").c_str()));
    file.print("%c", 'x');
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(read_file(directory_ / "out"), "x");
}

TEST_F(Files, take_what_is_printed_at_once_up_to_511_characters) {
    FileWriter file(open_to_write((directory_ / "out").c_str()));
    file.print("%s|", std::string(510, 'x').c_str());
    file.print("%s|", std::string(511, 'y').c_str());
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(read_file(directory_ / "out"), std::string(510, 'x') + "|" + std::string(511, 'y'));
}

TEST_F(Files, are_closed_without_an_error_whatever_failed_before) {
    FileWriter file(open_to_write((directory_ / "out").c_str()));
    errno = ENOENT;
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.close(), 0);
}

TEST_F(Files, that_cannot_be_closed_say_why) {
    const int fd = ::dup(STDIN_FILENO);
    FileWriter file{UniqueFd(fd)};
    ::close(fd);
    EXPECT_EQ(file.close(), EBADF);
}

TEST_F(Files, that_are_no_folders_are_not_even_opened_as_one) {
    const std::string pipe = directory_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int child = fork_child([&] { return open_directory(pipe.c_str()) ? 8 : 7; });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 7);
}

TEST_F(Files, that_take_no_more_say_why) {
    FileWriter full(open_to_write("/dev/full"));
    full.put(std::string(10'000, 'x'));
    errno = 0;
    EXPECT_EQ(full.close(), ENOSPC);
}

TEST_F(Files, that_take_nothing_and_give_no_reason_have_an_error) {
    OddCalls calls;
    calls.write = [](int, std::size_t) { return 0; };
    FileWriter file(open_to_write((directory_ / "out").c_str()));
    file.put("text");
    errno = 0;
    EXPECT_EQ(file.close(), EIO);
}

TEST_F(Files, behind_a_link_are_refused_where_anybody_can_put_one) {
    const std::string victim = directory_.file("victim", "precious");
    ASSERT_EQ(::symlink(victim.c_str(), (directory_ / "link").c_str()), 0);
    EXPECT_FALSE(open_to_write((directory_ / "link").c_str(), Links::refuse));
    EXPECT_EQ(errno, ELOOP);
    EXPECT_EQ(test_support::read_file(victim), "precious");
    EXPECT_TRUE(open_to_write((directory_ / "link").c_str(), Links::follow));
    EXPECT_EQ(test_support::read_file(victim), "");
}

TEST_F(Files, that_are_folders_list_their_entries_and_then_end_without_an_error) {
    directory_.file("entry", "");
    const Directory folder = open_directory(directory_.path().c_str());
    int entries = 0;
    while (next_entry(folder) != nullptr) {
        ++entries;
        errno = ENOENT;
    }
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(entries, 3);
    EXPECT_FALSE(open_directory((directory_ / "entry").c_str()));
}

TEST_F(Files, that_are_stuck_let_an_interrupt_in) {
    const std::string pipe = directory_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(end_of_interrupted(SIGINT, [&] { open_to_write(pipe.c_str()); }), 50);
    EXPECT_EQ(end_of_interrupted(SIGTERM, [&] { can_be_read(pipe.c_str()); }), 60);
    const auto write_without_a_reader_that_reads = [&] {
        const UniqueFd other_end = open_file(pipe.c_str(), O_RDWR);
        FileWriter file(open_to_write(pipe.c_str()));
        file.put(std::string(100'000, 'x'));
    };
    EXPECT_EQ(end_of_interrupted(SIGINT, write_without_a_reader_that_reads), 50);
    const auto read_what_nobody_writes = [&] {
        FileReader file(open_file(pipe.c_str(), O_RDWR));
        file.get();
    };
    EXPECT_EQ(end_of_interrupted(SIGINT, read_what_nobody_writes), 50);
}

TEST_F(Files, hold_interrupts_back_again_once_they_are_no_longer_stuck) {
    const std::string pipe = directory_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const Gate ready;
    const int child = fork_child([&] {
        install_interrupt_handler(exit_by_signal);
        ready.open();
        can_be_read(pipe.c_str());
        ::raise(SIGINT);
        ::raise(SIGTERM);
        return 7;
    });
    ready.wait();
    ::usleep(300'000);
    const UniqueFd writer(::open(pipe.c_str(), O_WRONLY));
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 7);
}

TEST_F(Files, that_answer_at_once_let_no_interrupt_in) {
    const auto body = [&] {
        ::raise(SIGINT);
        FileWriter file(open_to_write((directory_ / "out").c_str()));
        file.put("whole");
        return file.close() == 0 ? 7 : 8;
    };
    EXPECT_EQ(end_under_the_handler(body), 7);
    EXPECT_EQ(test_support::read_file(directory_ / "out"), "whole");
}

TEST_F(Files, that_hold_the_handler_let_only_the_other_signal_in) {
    static std::string pipe;
    pipe = directory_ / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const auto handler = [](int signal_number) {
        if (interrupts_sealed()) {
            ::_exit(48 + signal_number);
        }
        seal_interrupts(signal_number);
        ::raise(SIGINT);
        ::usleep(10'000);
        ::raise(SIGTERM);
        ::usleep(10'000);
        open_to_write(pipe.c_str());
    };
    const int child = fork_child([&] {
        install_interrupt_handler(handler);
        ::raise(SIGINT);
        let_interrupts_in();
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 48 + SIGTERM);
}

TEST_F(Files, leave_the_alarm_of_a_run_without_a_handler_alone) {
    const int child = fork_child([&] {
        const itimerval an_hour{{}, {3600, 0}};
        ::setitimer(ITIMER_REAL, &an_hour, nullptr);
        ::signal(SIGALRM, SIG_IGN);
        can_be_read("/dev/null");
        ::raise(SIGALRM);
        itimerval left{};
        ::getitimer(ITIMER_REAL, &left);
        return left.it_value.tv_sec > 3000 ? 7 : 8;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 7);
}

TEST_F(Files, leave_the_action_of_an_alarm_as_it_was) {
    const auto body = [&] {
        can_be_read("/dev/null");
        ::raise(SIGALRM);
        return 7;
    };
    EXPECT_EQ(end_under_the_handler(body), 128 + SIGALRM);
}

} // namespace
} // namespace wivex

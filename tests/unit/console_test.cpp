// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "console_capture.hpp"
#include "pipe.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;

TEST(Console, writes_a_complete_line_at_once) {
    ConsoleCapture console;
    print_out("[WIFI]%s %d\n", "line", 1);
    EXPECT_EQ(console.out_without_flush(), "[WIFI]line 1\n");
    EXPECT_EQ(console.err(), "");
}

TEST(Console, holds_an_unfinished_line_until_the_flush) {
    ConsoleCapture console;
    print_out("one");
    EXPECT_EQ(console.out_without_flush(), "");
    print_out(" line\nand");
    EXPECT_EQ(console.out_without_flush().substr(0, 9), "one line\n");
    flush_out();
    print_out(" more");
    flush_out();
    ConsoleCapture later;
    EXPECT_EQ(later.out(), "");
}

TEST(Console, flushes_an_unfinished_line) {
    ConsoleCapture console;
    print_out("prompt: ");
    flush_out();
    EXPECT_EQ(console.out_without_flush(), "prompt: ");
    flush_out();
    EXPECT_EQ(console.out_without_flush(), "");
}

TEST(Console, prints_errors_to_standard_error_at_once) {
    ConsoleCapture console;
    print_err("Scan returning %s", "FAIL-BUSY");
    EXPECT_EQ(console.err(), "Scan returning FAIL-BUSY");
    EXPECT_EQ(console.out(), "");
}

TEST(Console, flushes_an_unfinished_line_before_an_error_without_text) {
    ConsoleCapture console;
    print_out("prompt: ");
    print_err("%s", "");
    EXPECT_EQ(console.out_without_flush(), "prompt: ");
}

TEST(Console, prints_nothing_where_a_text_cannot_be_converted) {
    ConsoleCapture console;
    const std::array<wchar_t, 2> no_character{static_cast<wchar_t>(0x7fffffff), L'\0'};
    print_out("before %ls after\n", no_character.data());
    print_err("before %ls after\n", no_character.data());
    EXPECT_EQ(console.out(), "");
    EXPECT_EQ(console.err(), "");
}

TEST(Console, holds_the_piece_behind_the_last_newline_until_the_flush) {
    ConsoleCapture console;
    print_out("one line\nand");
    EXPECT_EQ(console.out_without_flush(), "one line\n");
    EXPECT_EQ(console.out(), "and");
}

TEST(Console, keeps_the_order_of_the_two_streams) {
    ConsoleCapture console(ConsoleCapture::Streams::together);
    print_out("1 ");
    print_err("2 ");
    print_out("3\n");
    print_err("4\n");
    EXPECT_EQ(console.out(), "1 2 3\n4\n");
}

TEST(Console, prints_the_text_of_an_error) {
    ConsoleCapture console(ConsoleCapture::Streams::together);
    print_out("before ");
    print_error("[WIFI]Open error", ENOENT);
    EXPECT_EQ(console.out(), "before [WIFI]Open error: No such file or directory\n");
}

TEST(Console, prints_texts_of_any_length_whole) {
    ConsoleCapture console;
    for (const std::size_t length :
         {1U, 127U, 128U, 1023U, 1024U, 2047U, 2048U, 2049U, 4095U, 4096U, 4097U, 1000000U}) {
        const std::string text(length, 't');
        print_out("%s\n", text.c_str());
        EXPECT_EQ(console.out(), text + "\n");
        print_out("%s", text.c_str());
        EXPECT_EQ(console.out(), text);
        print_err("%s", text.c_str());
        EXPECT_EQ(console.err(), text);
    }
}

TEST(Console, prints_many_unfinished_pieces_whole) {
    ConsoleCapture console;
    std::string expected;
    for (int i = 0; i < 100000; ++i) {
        print_out("%d,", i);
        expected += std::to_string(i) + ",";
    }
    EXPECT_EQ(console.out(), expected);
}

/// Runs `print` in a child whose standard output is a pipe, and returns what comes out of it when
/// nobody reads for `pause`.
std::string through_a_pipe(bool non_blocking, milliseconds pause, void (*print)()) {
    Pipe pipe;
    const int child = fork_child([&] {
        ::dup2(pipe.writer(), STDOUT_FILENO);
        pipe.close_writer();
        if (non_blocking) {
            ::fcntl(STDOUT_FILENO, F_SETFL, ::fcntl(STDOUT_FILENO, F_GETFL) | O_NONBLOCK);
        }
        print();
        flush_out();
        return 0;
    });
    pipe.close_writer();
    std::this_thread::sleep_for(pause);
    std::string text;
    std::array<char, 4096> buffer{};
    ssize_t count = 0;
    while ((count = ::read(pipe.reader(), buffer.data(), buffer.size())) > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(count));
    }
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 0);
    return text;
}

void print_a_megabyte() {
    for (int i = 0; i < 100000; ++i) {
        print_out("%09d\n", i);
    }
}

std::string a_megabyte() {
    std::string text;
    for (int i = 0; i < 100000; ++i) {
        const std::string digits = std::to_string(i);
        text += std::string(9 - digits.size(), '0') + digits + "\n";
    }
    return text;
}

TEST(Console, loses_nothing_when_the_reader_rests_for_a_while) {
    EXPECT_EQ(through_a_pipe(false, milliseconds(500), print_a_megabyte), a_megabyte());
}

TEST(Console, loses_nothing_on_a_pipe_that_does_not_block) {
    EXPECT_EQ(through_a_pipe(true, milliseconds(500), print_a_megabyte), a_megabyte());
}

TEST(Console, is_line_buffered_into_a_pipe) {
    const Pipe pipe;
    const int child = fork_child([&] {
        ::dup2(pipe.writer(), STDOUT_FILENO);
        print_out("a line\nand a piece");
        std::this_thread::sleep_for(milliseconds(700));
        return 0;
    });
    std::this_thread::sleep_for(milliseconds(300));
    int waiting = 0;
    ::ioctl(pipe.reader(), FIONREAD, &waiting);
    EXPECT_GE(waiting, 7);
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 0);
}

TEST(Console, drops_text_that_its_file_does_not_take) {
    const int child = fork_child([] {
        const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
        ::dup2(full, STDOUT_FILENO);
        print_a_megabyte();
        flush_out();
        return 7;
    });
    EXPECT_EQ(end_of_child(child, milliseconds(5000)), 7);
}

/// How a child ends that prints into a pipe which nobody reads, when it is interrupted.
int interrupted_while_nobody_reads(void (*handler)(int), milliseconds longest) {
    const Pipe pipe;
    const auto print = [&pipe] {
        ::dup2(pipe.writer(), STDOUT_FILENO);
        print_a_megabyte();
    };
    return end_of_interrupted(SIGINT, print, handler, longest);
}

TEST(Console, lets_an_interrupt_in_while_nobody_reads) {
    EXPECT_EQ(interrupted_while_nobody_reads(exit_by_signal, milliseconds(2000)), 50);
}

TEST(Console, drops_text_that_nobody_takes_once_the_end_has_begun) {
    const auto print_more = [](int /*signal_number*/) {
        seal_interrupts(SIGINT);
        print_a_megabyte();
        flush_out();
        ::_exit(51);
    };
    EXPECT_EQ(interrupted_while_nobody_reads(print_more, milliseconds(9000)), 51);
}

} // namespace
} // namespace wivex

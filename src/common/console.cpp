// SPDX-License-Identifier: Apache-2.0
#include "common/console.hpp"

#include "common/console_stream.hpp"
#include "common/interrupts.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

namespace wivex {

namespace {

constinit ConsoleStream standard_output(STDOUT_FILENO);
constinit ConsoleStream standard_error(STDERR_FILENO);

// The part of standard output that was not written yet.
std::array<char, PIPE_BUF> pending;
std::atomic<std::size_t> pending_length{0};

ConsoleStream::Waiting usual_waiting() {
    return interrupts_sealed() ? ConsoleStream::Waiting::patiently
                               : ConsoleStream::Waiting::long_as_it_takes;
}

// What is not written stays pending: the termination handler, let in while a reader is slow, goes
// on exactly where the interrupted flush stopped.
void write_pending(ConsoleStream::Waiting waiting) {
    while (pending_length > 0) {
        const std::size_t written =
            standard_output.write_some({pending.data(), pending_length}, waiting);
        if (written == 0 && waiting == ConsoleStream::Waiting::not_at_all) {
            return;
        }
        pending_length -= written;
        std::memmove(pending.data(), pending.data() + written, pending_length);
    }
}

// The handler writes its results first and waits for a reader only after that.
void write_complete_lines() {
    write_pending(interrupts_sealed() ? ConsoleStream::Waiting::not_at_all : usual_waiting());
}

void append(std::string_view text) {
    while (!text.empty()) {
        if (pending_length == pending.size()) {
            write_pending(usual_waiting());
        }
        const std::size_t room = std::min(text.size(), pending.size() - pending_length);
        std::memcpy(pending.data() + pending_length, text.data(), room);
        pending_length += room;
        text.remove_prefix(room);
    }
}

void buffer_out(std::string_view text) {
    const std::size_t last_newline = text.rfind('\n');
    if (last_newline == std::string_view::npos) {
        append(text);
        return;
    }
    append(text.substr(0, last_newline + 1));
    write_complete_lines();
    append(text.substr(last_newline + 1));
}

// Formats on the stack, or in memory of its own when the text is long.
template <typename Sink>
[[gnu::format(printf, 1, 0)]] void with_text(const char* format, va_list arguments, Sink sink) {
    std::array<char, 2048> text{};
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(text.data(), text.size(), format, arguments);
    if (length < 0) {
        va_end(again);
        return;
    }
    const auto size = static_cast<std::size_t>(length);
    if (size < text.size()) {
        sink(std::string_view(text.data(), size));
    } else {
        std::string long_text;
        long_text.resize(size);
        std::vsnprintf(long_text.data(), size + 1, format, again);
        sink(long_text);
    }
    va_end(again);
}

void write_err(std::string_view text) {
    flush_out();
    while (!text.empty()) {
        text.remove_prefix(standard_error.write_some(text, usual_waiting()));
    }
}

} // namespace

void print_out(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    with_text(format, arguments, buffer_out);
    va_end(arguments);
}

void print_err(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    with_text(format, arguments, write_err);
    va_end(arguments);
}

void print_error(const char* prefix, int error) {
    print_err("%s: %s\n", prefix, std::strerror(error));
}

void flush_out() {
    write_pending(usual_waiting());
    standard_output.settle(usual_waiting());
    standard_error.settle(usual_waiting());
}

void shield_from_hanging_files() {
    console_helper::start();
}

} // namespace wivex

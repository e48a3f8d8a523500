#include "common/console.hpp"

#include "common/interrupts.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace wivex {

namespace {

// A pipe that is ready for writing takes this much without blocking.
constexpr std::size_t largest_write = PIPE_BUF;

// How long the termination handler waits for a reader before it drops its text.
constexpr int patience_in_handler_ms = 200;

struct Stream {
    int fd = -1;
    bool given_up = false;
};

Stream standard_output{STDOUT_FILENO};
Stream standard_error{STDERR_FILENO};

// The part of standard output that was not written yet.
std::array<char, largest_write> pending;
std::size_t pending_length = 0;

bool writable_within(int fd, int timeout_ms) {
    pollfd waiting{fd, POLLOUT, 0};
    return poll(&waiting, 1, timeout_ms) > 0;
}

// Waits until the reader takes text; false when it is to be dropped.
bool wait_for_reader(Stream& stream) {
    if (stream.given_up) {
        return false;
    }
    if (writable_within(stream.fd, 0)) {
        return true;
    }
    if (interrupts_sealed()) {
        stream.given_up = !writable_within(stream.fd, patience_in_handler_ms);
        return !stream.given_up;
    }
    const InterruptsOpen open;
    return writable_within(stream.fd, -1);
}

// Writes the beginning of `text` and returns its length; all of it when it cannot be written.
std::size_t write_some(Stream& stream, std::string_view text) {
    if (!wait_for_reader(stream)) {
        return stream.given_up ? text.size() : 0;
    }
    const ssize_t written = write(stream.fd, text.data(), std::min(text.size(), largest_write));
    if (written >= 0) {
        return static_cast<std::size_t>(written);
    }
    return errno == EINTR || errno == EAGAIN ? 0 : text.size();
}

void append(std::string_view text) {
    while (!text.empty()) {
        if (pending_length == pending.size()) {
            flush_out();
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
    flush_out();
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
        const auto long_text = std::make_unique<char[]>(size + 1);
        std::vsnprintf(long_text.get(), size + 1, format, again);
        sink(std::string_view(long_text.get(), size));
    }
    va_end(again);
}

void write_err(std::string_view text) {
    flush_out();
    while (!text.empty()) {
        text.remove_prefix(write_some(standard_error, text));
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

void print_errno(const char* prefix) {
    print_err("%s: %s\n", prefix, std::strerror(errno));
}

void flush_out() {
    // What is not written stays pending: the termination handler, let in while a reader is slow,
    // goes on exactly where the interrupted flush stopped.
    while (pending_length > 0) {
        const std::size_t written =
            write_some(standard_output, std::string_view(pending.data(), pending_length));
        pending_length -= written;
        std::memmove(pending.data(), pending.data() + written, pending_length);
    }
}

} // namespace wivex

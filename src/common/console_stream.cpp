// SPDX-License-Identifier: Apache-2.0
#include "common/console_stream.hpp"

#include "common/interrupts.hpp"

#include <poll.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace wivex {

namespace {

constexpr int patience_without_progress_ms = 2'000;
constexpr int patience_in_all_ms = 10'000;

// Pause before a stream is tried again that seems to have room and takes nothing.
constexpr int pause_ms = 10;

// Shared by both streams: usually one reader stands behind both. Milliseconds of 32 bits, because
// not every ARM processor reads more in one step; only differences count, which an overflow leaves
// as they are.
std::atomic<bool> has_waited{false};
std::atomic<std::uint32_t> first_wait_ms{0};
std::atomic<std::uint32_t> last_progress_ms{0};

std::uint32_t now_ms() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint32_t>(std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000);
}

int passed_ms(std::uint32_t since, std::uint32_t now) {
    return std::max(static_cast<std::int32_t>(now - since), 0);
}

int patience_left_ms() {
    const std::uint32_t now = now_ms();
    if (!has_waited) {
        has_waited = true;
        first_wait_ms = now;
        last_progress_ms = now;
    }
    const int left = std::min(patience_without_progress_ms - passed_ms(last_progress_ms, now),
                              patience_in_all_ms - passed_ms(first_wait_ms, now));
    return std::max(left, 0);
}

bool ready_within(int fd, short events, int timeout_ms) {
    pollfd waiting{fd, events, {}};
    return poll(&waiting, 1, timeout_ms) > 0;
}

bool wait_open(int fd, short events, int timeout_ms) {
    const InterruptsOpen open;
    return ready_within(fd, events, timeout_ms);
}

} // namespace

// The handler has one patience for both streams: when one stream has used it up, the other is tried
// once and not waited for.
bool ConsoleStream::wait_patiently(int fd, short events) {
    const int left_ms = patience_left_ms();
    if (refused_ && left_ms > 0) {
        ready_within(-1, 0, std::min(pause_ms, left_ms));
    }
    const bool stuck = stalled_ && left_ms == 0;
    given_up_ = stuck || !ready_within(fd, events, left_ms);
    return !given_up_;
}

bool ConsoleStream::wait_for_reader(Waiting waiting) {
    if (waiting == Waiting::patiently) {
        return wait_patiently(fd_, POLLOUT);
    }
    if ((!stalled_ || waiting == Waiting::not_at_all) && ready_within(fd_, POLLOUT, 0)) {
        return true;
    }
    if (waiting == Waiting::not_at_all) {
        return false;
    }
    if (refused_) {
        wait_open(-1, 0, pause_ms);
    }
    return wait_open(fd_, POLLOUT, -1);
}

bool ConsoleStream::wait_for_helper(Waiting waiting) {
    const int word = console_helper::descriptor();
    bool there = false;
    switch (waiting) {
    case Waiting::long_as_it_takes:
        there = wait_open(word, POLLIN, -1);
        break;
    case Waiting::patiently:
        there = wait_patiently(word, POLLIN);
        break;
    case Waiting::not_at_all:
        there = ready_within(word, POLLIN, 0);
    }
    if (there) {
        console_helper::take_word();
        last_progress_ms = now_ms();
    }
    return there;
}

std::size_t ConsoleStream::write_directly(std::string_view text) {
    ssize_t written = -1;
    {
        const CallCutShort cut_short;
        written = write(fd_, text.data(), text.size());
    }
    const int error = written < 0 ? errno : 0;
    stalled_ = written >= 0 ? static_cast<std::size_t>(written) < text.size()
                            : error == EINTR || error == EAGAIN;
    refused_ = written == 0 || error == EAGAIN;
    if (written > 0) {
        last_progress_ms = now_ms();
    }
    return stalled_ ? static_cast<std::size_t>(std::max<ssize_t>(written, 0)) : text.size();
}

std::size_t ConsoleStream::write_some(std::string_view text, Waiting waiting) {
    if (given_up_) {
        return text.size();
    }
    const std::string_view part = text.substr(0, console_helper::longest_text);
    if (served()) {
        if (console_helper::busy() && !wait_for_helper(waiting)) {
            return given_up_ ? text.size() : 0;
        }
        return !console_helper::busy() && console_helper::send(fd_, part) ? part.size() : 0;
    }
    if (!wait_for_reader(waiting)) {
        return given_up_ ? text.size() : 0;
    }
    return write_directly(part);
}

void ConsoleStream::settle(Waiting waiting) {
    while (served() && console_helper::busy() && !given_up_) {
        wait_for_helper(waiting);
    }
}

} // namespace wivex

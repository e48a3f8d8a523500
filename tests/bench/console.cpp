// SPDX-License-Identifier: Apache-2.0
#include "console.hpp"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace bench_test {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int small_pipe_size = 8192;
constexpr std::chrono::milliseconds tick{20};
constexpr int ticks_a_second = 50;

[[noreturn]] void give_up(const char* what) {
    std::perror(what);
    std::abort();
}

void set_modes(int terminal, ConsoleKind kind) {
    termios modes{};
    tcgetattr(terminal, &modes);
    if (kind == ConsoleKind::raw_terminal) {
        cfmakeraw(&modes);
    }
    modes.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(terminal, TCSANOW, &modes);
}

} // namespace

Console::Console(ConsoleKind kind) : kind_(kind) {
    if (is_terminal(kind)) {
        open_terminal();
    } else if (kind == ConsoleKind::socket) {
        open_socket();
    } else {
        open_pipe();
    }
    reader_ = std::jthread([this](const std::stop_token& stop) { work(stop); });
}

void Console::open_pipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        give_up("pipe2");
    }
    reader_end_.reset(ends[0]);
    run_end_.reset(ends[1]);
    if (kind_ == ConsoleKind::small_pipe) {
        fcntl(run_end_.get(), F_SETPIPE_SZ, small_pipe_size);
    }
}

void Console::open_socket() {
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        give_up("socketpair");
    }
    reader_end_.reset(ends[0]);
    run_end_.reset(ends[1]);
}

void Console::open_terminal() {
    reader_end_.reset(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    std::array<char, 64> name{};
    if (reader_end_.get() < 0 || grantpt(reader_end_.get()) != 0 ||
        unlockpt(reader_end_.get()) != 0 ||
        ptsname_r(reader_end_.get(), name.data(), name.size()) != 0) {
        give_up("posix_openpt");
    }
    run_end_.reset(open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (run_end_.get() < 0) {
        give_up(name.data());
    }
    set_modes(run_end_.get(), kind_);
}

void Console::type(std::string_view text) const {
    [[maybe_unused]] const ssize_t written = write(reader_end_.get(), text.data(), text.size());
}

// Takes what there is, at most so much; false at the end of the stream.
bool Console::take(std::size_t most) {
    std::array<char, 65536> buffer{};
    pollfd waiting{reader_end_.get(), POLLIN, 0};
    if (poll(&waiting, 1, 0) <= 0) {
        return true;
    }
    const ssize_t length = read(waiting.fd, buffer.data(), std::min(most, buffer.size()));
    if (length <= 0) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    std::copy_if(buffer.data(), buffer.data() + length, std::back_inserter(text_),
                 [this](char letter) { return letter != '\r' || !is_terminal(kind_); });
    return true;
}

void Console::look_at_flags() {
    const std::lock_guard lock(mutex_);
    const int flags = run_end_.get() < 0 ? 0 : fcntl(run_end_.get(), F_GETFL);
    if ((flags & O_NONBLOCK) != 0) {
        seen_without_blocking_ = true;
    }
}

void Console::work(const std::stop_token& stop) {
    auto next = Clock::now();
    while (!stop.stop_requested() && !at_its_end_) {
        look_at_flags();
        const int speed = speed_;
        pollfd waiting{reader_end_.get(), POLLIN, 0};
        if (speed == fast) {
            poll(&waiting, 1, static_cast<int>(tick.count()));
            next = Clock::now();
        } else {
            // By the clock: a machine at work reads no slower.
            next += tick;
            std::this_thread::sleep_until(next);
        }
        const int most = speed == fast ? speed : speed / ticks_a_second;
        if (most > 0 && !take(static_cast<std::size_t>(most))) {
            at_its_end_ = true;
        }
    }
}

bool Console::shows(std::string_view text, std::chrono::milliseconds limit) {
    const auto end = Clock::now() + limit;
    const auto has_come = [this, text] {
        const std::lock_guard lock(mutex_);
        return text_.find(text) != std::string::npos;
    };
    while (!has_come()) {
        if (at_its_end_ || Clock::now() > end) {
            return has_come();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

std::string Console::text() const {
    const std::lock_guard lock(mutex_);
    return text_;
}

std::string Console::rest(std::chrono::milliseconds limit) {
    look_at_flags();
    {
        const std::lock_guard lock(mutex_);
        run_end_.reset();
    }
    const auto end = Clock::now() + limit;
    while (!at_its_end_ && Clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return text();
}

} // namespace bench_test

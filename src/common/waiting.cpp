// SPDX-License-Identifier: Apache-2.0
#include "common/waiting.hpp"

#include "common/console.hpp"
#include "common/interrupts.hpp"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

namespace wivex {

namespace {

// The clock behind `time` may lag the precise one by one timer tick of a slow kernel.
constexpr int longest_tick_ms = 10;

// Pause when a descriptor reports an error that reading does not take away.
constexpr long pause_on_error_ns = 10'000'000;

int poll_open(pollfd& waiting, int timeout_ms) {
    const InterruptsOpen open;
    return poll(&waiting, 1, timeout_ms);
}

int milliseconds_to_next_second() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return 1000 - static_cast<int>(now.tv_nsec / 1'000'000) + longest_tick_ms;
}

void sleep_open(timespec duration) {
    flush_out();
    timespec left{};
    const InterruptsOpen open;
    while (nanosleep(&duration, &left) != 0 && errno == EINTR) {
        duration = left;
    }
}

} // namespace

int wait_readable(int fd, int timeout_ms) {
    flush_out();
    pollfd waiting{fd, POLLIN, {}};
    const int ready = poll_open(waiting, timeout_ms);
    if ((waiting.revents & POLLNVAL) != 0) {
        errno = EBADF;
        return -1;
    }
    return ready;
}

void wait_readable_or_next_second(int fd) {
    flush_out();
    pollfd waiting{fd, POLLIN, {}};
    const int ready = poll_open(waiting, milliseconds_to_next_second());
    if (ready != 0 && (waiting.revents & POLLIN) == 0) {
        sleep_open({0, pause_on_error_ns});
    }
}

void wait_until_expired(DeadlineTimer& timer) {
    constexpr int no_descriptor = -1;
    while (!timer.expired()) {
        wait_readable_or_next_second(no_descriptor);
    }
}

void wait_for(std::int64_t seconds, std::int64_t microseconds) {
    const std::int64_t whole = seconds > 0 ? seconds : 0;
    const std::int64_t part = microseconds > 0 ? microseconds : 0;
    timespec duration{};
    duration.tv_sec = static_cast<time_t>(whole + part / 1'000'000);
    duration.tv_nsec = static_cast<long>(part % 1'000'000) * 1000;
    sleep_open(duration);
}

ssize_t wait_for_data(int fd, std::span<char> buffer) {
    flush_out();
    const InterruptsOpen open;
    return read(fd, buffer.data(), buffer.size());
}

int wait_for_driver(int fd, unsigned long request, void* argument) {
    flush_out();
    const InterruptsOpen open;
    return ioctl(fd, request, argument);
}

int wait_for_child(pid_t pid) {
    flush_out();
    int status = -1;
    pid_t ended = -1;
    const InterruptsOpen open;
    do {
        ended = waitpid(pid, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return ended == pid ? status : -1;
}

} // namespace wivex

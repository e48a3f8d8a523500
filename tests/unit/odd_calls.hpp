// SPDX-License-Identifier: Apache-2.0
// System calls that answer as a test says: the test program is linked so that the tool asks here
// first.
#pragma once

#include <poll.h>
#include <sys/time.h>
#include <sys/types.h>

#include <cstddef>
#include <ctime>
#include <functional>

namespace wivex::test_support {

/// While it lives, those of these calls that are set answer in place of the kernel, to the thread
/// that made it. One at a time.
class OddCalls {
public:
    OddCalls();
    ~OddCalls();
    OddCalls(const OddCalls&) = delete;
    OddCalls& operator=(const OddCalls&) = delete;

    std::function<int(timeval& now)> gettimeofday;
    std::function<int(const timespec& duration, timespec& left)> nanosleep;
    std::function<int(pollfd& descriptor, int timeout_ms)> poll;
    std::function<int(const itimerval& time)> setitimer;
    std::function<std::time_t()> time;
    std::function<ssize_t(int fd, std::size_t length)> write;
};

/// What the kernel answers.
int really_poll(pollfd& descriptor, int timeout_ms);

} // namespace wivex::test_support

// SPDX-License-Identifier: Apache-2.0
// The waiting room: the one door through which the program waits.
//
// A wait sleeps until there is something to do, so it costs next to no processor time; standard
// output is flushed before it; and every wait lets a pending SIGINT or SIGTERM in, also one that
// finds its input ready at once.
#pragma once

#include "common/deadline_timer.hpp"

#include <sys/types.h>

#include <cstdint>
#include <span>

namespace wivex {

/// Waits until `fd` can be read or `timeout_ms` milliseconds have passed (negative: no limit).
/// Returns 1 when it can be read, 0 after the time-out, -1 on an error (errno is set).
int wait_readable(int fd, int timeout_ms);

/// Waits until `fd` can be read or the wall clock shows its next second, whichever comes first.
/// For loops that poll an event and a `DeadlineTimer`.
void wait_readable_or_next_second(int fd);

/// Sleeps until `timer` has expired.
void wait_until_expired(DeadlineTimer& timer);

/// Sleeps `seconds` and then `microseconds`; negative values do not sleep.
void wait_for(std::int64_t seconds, std::int64_t microseconds = 0);

/// Reads from `fd` into `buffer`, however long it takes. Returns what `read` returns.
ssize_t wait_for_data(int fd, std::span<char> buffer);

/// Makes a request to the driver behind `fd`, however long it works on it: a bus loopback takes
/// seconds. Returns what `ioctl` returns, with errno set.
int wait_for_driver(int fd, unsigned long request, void* argument);

/// Waits until the child `pid` has ended. Returns its wait status, or -1 when there is none.
int wait_for_child(pid_t pid);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "odd_calls.hpp"

#include <unistd.h>

namespace {

thread_local wivex::test_support::OddCalls* odd_calls = nullptr;

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

int __real_gettimeofday(timeval* now, void* zone);
int __real_nanosleep(const timespec* duration, timespec* left);
int __real_poll(pollfd* descriptors, nfds_t count, int timeout_ms);
int __real_setitimer(__itimer_which_t which, const itimerval* time, itimerval* before);
std::time_t __real_time(std::time_t* now);
ssize_t __real_write(int fd, const void* data, std::size_t length);

int __wrap_gettimeofday(timeval* now, void* zone) {
    return odd_calls != nullptr && odd_calls->gettimeofday ? odd_calls->gettimeofday(*now)
                                                           : __real_gettimeofday(now, zone);
}

int __wrap_nanosleep(const timespec* duration, timespec* left) {
    return odd_calls != nullptr && odd_calls->nanosleep ? odd_calls->nanosleep(*duration, *left)
                                                        : __real_nanosleep(duration, left);
}

int __wrap_poll(pollfd* descriptors, nfds_t count, int timeout_ms) {
    return odd_calls != nullptr && odd_calls->poll ? odd_calls->poll(*descriptors, timeout_ms)
                                                   : __real_poll(descriptors, count, timeout_ms);
}

int __wrap_setitimer(__itimer_which_t which, const itimerval* time, itimerval* before) {
    return odd_calls != nullptr && odd_calls->setitimer ? odd_calls->setitimer(*time)
                                                        : __real_setitimer(which, time, before);
}

std::time_t __wrap_time(std::time_t* now) {
    return odd_calls != nullptr && odd_calls->time ? odd_calls->time() : __real_time(now);
}

ssize_t __wrap_write(int fd, const void* data, std::size_t length) {
    return odd_calls != nullptr && odd_calls->write ? odd_calls->write(fd, length)
                                                    : __real_write(fd, data, length);
}
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

namespace wivex::test_support {

OddCalls::OddCalls() {
    odd_calls = this;
}

OddCalls::~OddCalls() {
    odd_calls = nullptr;
}

int really_poll(pollfd& descriptor, int timeout_ms) {
    return __real_poll(&descriptor, 1, timeout_ms);
}

} // namespace wivex::test_support

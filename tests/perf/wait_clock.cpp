// SPDX-License-Identifier: Apache-2.0
// Tells at the end of a run how long it was awake: its whole time without what it spent in the
// calls that only wait. Loaded before the tool by the bench.

#include <dlfcn.h>
#include <poll.h>
#include <sys/wait.h>
#include <time.h>

#include <cstdio>

namespace {

double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

class RunClock {
public:
    RunClock() : start_(now()) {}
    ~RunClock() {
        std::fprintf(stderr, "awake %.3f ms\n", (now() - start_ - waited_) * 1000);
    }
    RunClock(const RunClock&) = delete;
    RunClock& operator=(const RunClock&) = delete;

    void add_wait(double seconds) {
        waited_ += seconds;
    }

private:
    double start_;
    double waited_ = 0;
};

RunClock& run_clock() {
    static RunClock clock;
    return clock;
}

// Starts the clock when the library is loaded.
[[maybe_unused]] const RunClock& loaded = run_clock();

template <typename Function, typename... Arguments>
auto timed(const char* name, Arguments... arguments) {
    const auto next = reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
    const double start = now();
    const auto result = next(arguments...);
    run_clock().add_wait(now() - start);
    return result;
}

} // namespace

extern "C" int poll(pollfd* fds, nfds_t nfds, int timeout) {
    return timed<int (*)(pollfd*, nfds_t, int)>("poll", fds, nfds, timeout);
}

extern "C" int nanosleep(const timespec* requested_time, timespec* remaining) {
    return timed<int (*)(const timespec*, timespec*)>("nanosleep", requested_time, remaining);
}

extern "C" pid_t waitpid(pid_t pid, int* stat_loc, int options) {
    return timed<pid_t (*)(pid_t, int*, int)>("waitpid", pid, stat_loc, options);
}

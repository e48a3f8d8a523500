// SPDX-License-Identifier: Apache-2.0
// Linked into the coverage build alone: keeps the counters of runs that would lose them.

#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>

extern "C" {

void __gcov_dump();
[[noreturn]] void __real__exit(int status);
int __real_main(int argc, char* argv[]);
}

namespace {

// A run that was left without memory or descriptors still needs a little for its counters.
void lift_limits() {
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &unlimited);
    const rlimit some{16, 16};
    setrlimit(RLIMIT_NOFILE, &some);
    close(STDIN_FILENO);
}

bool started = false;

[[maybe_unused]] const int registered = std::atexit(lift_limits);

} // namespace

// The linker hands the calls of these over to here (--wrap).
extern "C" {

int __wrap_main(int argc, char* argv[]) {
    started = true;
    return __real_main(argc, argv);
}

[[noreturn]] void __wrap__exit(int status) {
    // Before that the counters are not ready yet.
    if (started) {
        lift_limits();
        __gcov_dump();
    }
    __real__exit(status);
}
}

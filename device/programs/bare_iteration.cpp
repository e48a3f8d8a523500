// SPDX-License-Identifier: Apache-2.0
#include "bare_iteration.hpp"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr timespec pause_length{2, 0};

bool read_once(const char* path) {
    static std::array<char, 4096> buffer;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    const ssize_t length = read(file, buffer.data(), buffer.size());
    close(file);
    return length > 0;
}

} // namespace

int iterations_of(int argc, char** argv) {
    const long count = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (count < 1 || count > 1000) {
        std::fprintf(stderr, "usage: %s ITERATIONS\n", argv[0]);
        return 0;
    }
    return static_cast<int>(count);
}

bool read_readiness() {
    return read_once("/sys/kernel/debug/usb/devices") && read_once("/sys/class/net/wlan0/flags");
}

void pause_after_iteration() {
    nanosleep(&pause_length, nullptr);
}

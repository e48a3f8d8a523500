// SPDX-License-Identifier: Apache-2.0
#include "world/gate.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace bench {

Gate::Gate() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) == 0) {
        read_end_ = ends[0];
        write_end_ = ends[1];
    }
}

Gate::~Gate() {
    close(read_end_);
    close(write_end_);
}

void Gate::open() const {
    const char token = '.';
    [[maybe_unused]] const ssize_t written = write(write_end_, &token, 1);
}

bool Gate::wait() {
    // Without this end the wait ends when the other process does.
    close(std::exchange(write_end_, -1));
    char token = 0;
    return read(read_end_, &token, 1) == 1;
}

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
// A descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace bench_test {

class OwnFd {
public:
    OwnFd() = default;
    explicit OwnFd(int fd) : fd_(fd) {}
    OwnFd(OwnFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    OwnFd& operator=(OwnFd&& other) noexcept {
        reset(std::exchange(other.fd_, -1));
        return *this;
    }
    OwnFd(const OwnFd&) = delete;
    OwnFd& operator=(const OwnFd&) = delete;
    ~OwnFd() {
        reset();
    }

    int get() const {
        return fd_;
    }
    void reset(int fd = -1) {
        if (fd_ >= 0) {
            close(fd_);
        }
        fd_ = fd;
    }

private:
    int fd_ = -1;
};

} // namespace bench_test

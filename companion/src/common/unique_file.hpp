// SPDX-License-Identifier: Apache-2.0
// A file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <utility>

namespace wivex::report {

class UniqueFile {
public:
    explicit UniqueFile(int fd = -1) : fd_(fd) {}
    ~UniqueFile() {
        reset();
    }
    UniqueFile(const UniqueFile&) = delete;
    UniqueFile& operator=(const UniqueFile&) = delete;
    UniqueFile(UniqueFile&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    UniqueFile& operator=(UniqueFile&& other) noexcept {
        reset(std::exchange(other.fd_, -1));
        return *this;
    }
    int get() const {
        return fd_;
    }
    bool is_open() const {
        return fd_ >= 0;
    }
    void reset(int fd = -1) {
        if (fd_ >= 0) {
            close(fd_);
        }
        fd_ = fd;
    }
    /// Hands the descriptor out; the caller closes it.
    int release() {
        return std::exchange(fd_, -1);
    }

private:
    int fd_;
};

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// A file in memory that a fuzz target can give to the tool and look into.
#pragma once

#include "require.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

namespace fuzz {

class MemoryFile {
public:
    MemoryFile() : fd_(memfd_create("fuzz", MFD_CLOEXEC)) {}
    ~MemoryFile() {
        close(fd_);
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const {
        return "/proc/self/fd/" + std::to_string(fd_);
    }
    /// A further descriptor of it, which belongs to the caller.
    int descriptor() const {
        return dup(fd_);
    }
    void fill(std::string_view text) const {
        require(write(fd_, text.data(), text.size()) == static_cast<ssize_t>(text.size()));
    }
    void empty() const {
        require(ftruncate(fd_, 0) == 0 && lseek(fd_, 0, SEEK_SET) == 0);
    }
    std::string content() const {
        std::string text(static_cast<std::size_t>(lseek(fd_, 0, SEEK_END)), '\0');
        require(pread(fd_, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
        return text;
    }

private:
    int fd_;
};

} // namespace fuzz

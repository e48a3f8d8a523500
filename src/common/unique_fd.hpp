// Owners of a file descriptor and of a stdio stream.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <utility>

namespace wivex {

class UniqueFd {
public:
    UniqueFd() = default;
    explicit UniqueFd(int fd) : fd_(fd) {}
    UniqueFd(UniqueFd&& other) noexcept : fd_(other.release()) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        reset(other.release());
        return *this;
    }
    UniqueFd(const UniqueFd&) = delete;
    UniqueFd& operator=(const UniqueFd&) = delete;
    ~UniqueFd() {
        reset();
    }

    int get() const {
        return fd_;
    }
    explicit operator bool() const {
        return fd_ >= 0;
    }
    int release() {
        return std::exchange(fd_, -1);
    }
    void reset(int fd = -1) {
        if (fd_ >= 0) {
            ::close(fd_);
        }
        fd_ = fd;
    }

private:
    int fd_ = -1;
};

struct FileCloser {
    void operator()(std::FILE* file) const {
        static_cast<void>(std::fclose(file));
    }
};

using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;

/// Writes what is still buffered. False, with the reason in `errno`, when the file has not taken
/// everything that was written to it.
inline bool written_completely(std::FILE* file) {
    return std::fflush(file) == 0 && std::ferror(file) == 0;
}

} // namespace wivex

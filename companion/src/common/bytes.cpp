// SPDX-License-Identifier: Apache-2.0
#include "common/bytes.hpp"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace wivex::report {

namespace {

bool wait_until_writable(int fd, int patience) {
    pollfd entry{fd, POLLOUT, 0};
    for (;;) {
        const int ready = poll(&entry, 1, patience);
        if (ready > 0) {
            return true;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
}

} // namespace

bool write_within(int fd, std::string_view bytes, int patience) {
    while (!bytes.empty()) {
        const ssize_t written = write(fd, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            if (!wait_until_writable(fd, patience)) {
                return false;
            }
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool write_all(int fd, std::string_view bytes) {
    return write_within(fd, bytes, -1);
}

long read_some(int fd, std::span<char> buffer) {
    for (;;) {
        const ssize_t length = read(fd, buffer.data(), buffer.size());
        if (length >= 0) {
            return length;
        }
        if (errno == EAGAIN) {
            pollfd entry{fd, POLLIN, 0};
            poll(&entry, 1, -1);
        } else if (errno != EINTR) {
            return -1;
        }
    }
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "pipe.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

namespace wivex::test_support {

Pipe::Pipe() {
    int ends[2]{-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        std::abort();
    }
    reader_.reset(ends[0]);
    writer_.reset(ends[1]);
}

void Pipe::write() const {
    if (::write(writer_.get(), "x", 1) != 1) {
        std::abort();
    }
}

void Pipe::read() const {
    char token = 0;
    [[maybe_unused]] const ssize_t length = ::read(reader_.get(), &token, 1);
}

} // namespace wivex::test_support

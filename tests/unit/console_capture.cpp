// SPDX-License-Identifier: Apache-2.0
#include "console_capture.hpp"

#include "common/console.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdio>

namespace wivex::test_support {

namespace {

/// The test framework reports through stdio; it shall go on doing so where the test program was
/// started, while descriptor 1 is caught.
void give_the_framework_a_descriptor_of_its_own() {
    static const bool done = [] {
        std::fflush(stdout);
        if (std::FILE* own = ::fdopen(::dup(STDOUT_FILENO), "w"); own != nullptr) {
            stdout = own;
        }
        return true;
    }();
    static_cast<void>(done);
}

} // namespace

ConsoleCapture::ConsoleCapture(Streams streams) {
    give_the_framework_a_descriptor_of_its_own();
    flush_out();
    saved_out_ = ::dup(STDOUT_FILENO);
    saved_err_ = ::dup(STDERR_FILENO);
    out_file_ = ::memfd_create("captured-out", MFD_CLOEXEC);
    err_file_ = streams == Streams::together ? ::dup(out_file_)
                                             : ::memfd_create("captured-err", MFD_CLOEXEC);
    ::dup2(out_file_, STDOUT_FILENO);
    ::dup2(err_file_, STDERR_FILENO);
}

ConsoleCapture::~ConsoleCapture() {
    flush_out();
    ::dup2(saved_out_, STDOUT_FILENO);
    ::dup2(saved_err_, STDERR_FILENO);
    for (const int fd : {saved_out_, saved_err_, out_file_, err_file_}) {
        ::close(fd);
    }
}

std::string ConsoleCapture::out() {
    flush_out();
    return take(out_file_, out_position_);
}

std::string ConsoleCapture::err() {
    return take(err_file_, err_position_);
}

std::string ConsoleCapture::out_without_flush() {
    return take(out_file_, out_position_);
}

std::string ConsoleCapture::take(int file, long& position) {
    std::string text;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = ::pread(file, buffer.data(), buffer.size(), position);
        if (count <= 0) {
            return text;
        }
        text.append(buffer.data(), static_cast<std::size_t>(count));
        position += static_cast<long>(count);
    }
}

} // namespace wivex::test_support

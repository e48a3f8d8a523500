// SPDX-License-Identifier: Apache-2.0
// Loaded before the tool by the bench: a machine with little memory. It gives nothing large, so
// that the C++ library keeps no reserve for its exceptions, and from the moment on in which the
// address space of the process is limited to a gigabyte or less it gives nothing at all.

#include <sys/resource.h>

#include <cerrno>
#include <cstddef>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the C library's own name for its allocator
extern "C" void* __libc_malloc(std::size_t size);

namespace {

constexpr std::size_t too_large = 65'536;
constexpr rlim_t gigabyte = 1'073'741'824;

bool used_up() {
    rlimit limit{};
    return getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur <= gigabyte;
}

} // namespace

extern "C" void* malloc(std::size_t size) {
    if (size < too_large && !used_up()) {
        return __libc_malloc(size);
    }
    errno = ENOMEM;
    return nullptr;
}

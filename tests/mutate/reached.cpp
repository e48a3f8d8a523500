// SPDX-License-Identifier: Apache-2.0
// Linked into the mutants' build alone: notes which functions a run reaches. Each process adds the
// address of a function, on its first call, to the file WIVEX_REACHED.PROGRAM.

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the linker's name for where the program begins
extern "C" const char __executable_start;

namespace {

#define NOT_NOTED __attribute__((no_instrument_function))

constexpr std::size_t places = 16384;
std::array<std::uintptr_t, places> noted;

/// True when the table knows the function, or is full; otherwise its place in the table.
NOT_NOTED bool known(std::uintptr_t function, std::size_t& place) {
    place = function / 4 % places;
    for (std::size_t tries = 0; tries < places; ++tries, place = (place + 1) % places) {
        if (noted[place] == function) {
            return true;
        }
        if (noted[place] == 0) {
            return false;
        }
    }
    return true;
}

NOT_NOTED bool write_down(std::uintptr_t function) {
    const char* const base = std::getenv("WIVEX_REACHED");
    if (base == nullptr) {
        return true;
    }
    std::array<char, 4096> path{};
    std::snprintf(path.data(), path.size(), "%s.%s", base, program_invocation_short_name);
    const int file = open(path.data(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0) {
        return false;
    }
    // A child of the run that has no rights writes its functions down too.
    fchmod(file, 0666);
    const auto start = reinterpret_cast<std::uintptr_t>(&__executable_start);
    // Not by a call that a test may answer in the place of the kernel.
    const bool written = dprintf(file, "%zx\n", function - start) > 0;
    close(file);
    return written;
}

} // namespace

// The compiler adds these calls to every function.
extern "C" {

NOT_NOTED void __cyg_profile_func_enter(void* function, void* /*caller*/) {
    const int error = errno;
    const auto address = reinterpret_cast<std::uintptr_t>(function);
    std::size_t place = 0;
    if (!known(address, place) && write_down(address)) {
        noted[place] = address;
    }
    errno = error;
}

NOT_NOTED void __cyg_profile_func_exit(void* /*function*/, void* /*caller*/) {}
}

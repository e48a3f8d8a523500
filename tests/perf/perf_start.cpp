// SPDX-License-Identifier: Apache-2.0
// From the start of the tool to its first line, against the start and end of a program that does
// nothing. Takes the tool's path.

#include "measure.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int samples = 200;

[[noreturn]] void give_up(const char* lacking) {
    std::fprintf(stderr, "perf_start: cannot have %s\n", lacking);
    std::exit(1);
}

/// Microseconds from the start of `program` until its first byte arrives, or until it has ended
/// when it has none to say. Ends this program when that one cannot be started.
double first_byte_of(const char* program) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        give_up("a pipe");
    }
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::string name(program);
    std::string version("-v");
    std::array<char*, 3> words{name.data(), version.data(), nullptr};
    const double start = perf::now();
    pid_t child = -1;
    if (posix_spawn(&child, program, &actions, nullptr, words.data(), nullptr) != 0) {
        give_up(program);
    }
    close(ends[1]);
    char byte = 0;
    if (read(ends[0], &byte, 1) < 0) {
        give_up("what it says");
    }
    const double end = perf::now();
    waitpid(child, nullptr, 0);
    close(ends[0]);
    posix_spawn_file_actions_destroy(&actions);
    return (end - start) * 1e6;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::puts("usage: perf_start TOOL");
        return 2;
    }
    perf::compare_with_floor(
        "start to first line", "us", samples, [&] { return first_byte_of(argv[1]); },
        [] { return first_byte_of("/bin/true"); }, 0);
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// Shell command lines, run so that an interrupt is handled at once while they run.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace wivex {

/// Runs "/bin/sh -c" with `command` and waits for its end. The child starts with default signal
/// actions and an open signal mask. Returns what the C library's `system` returns: the wait status
/// of the shell, 127 as its exit status when there is no shell, or -1 when no child can be started.
int run_shell(const char* command);

inline int run_shell(const std::string& command) {
    return run_shell(command.c_str());
}

/// Runs `command` like `run_shell` and returns the first `limit` bytes of its standard output, or
/// nothing when it cannot be started. Its exit status does not count.
std::optional<std::string> read_from_shell(const char* command, std::size_t limit);

} // namespace wivex

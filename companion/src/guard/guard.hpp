// SPDX-License-Identifier: Apache-2.0
// Keeps the run safe from the report. The process that reads the tool's pipe only moves bytes: to
// standard output and to a second process, which does everything that can fail. When that one
// crashes, hangs or is killed, the bytes keep moving.
#pragma once

#include <functional>

namespace wivex::report {

/// Reads standard input to its end. Every byte goes to standard output when `pass_through`, and to
/// the descriptor given to `analyse`, which runs in a process of its own; its result is the exit
/// status of that process. Returns that status, or 70 when the process did not end by itself.
int read_guarded(bool pass_through, const std::function<int(int fd)>& analyse);

} // namespace wivex::report

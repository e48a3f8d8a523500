// SPDX-License-Identifier: Apache-2.0
// Writes to console files in a process of its own.
//
// A write to a file on a file system that hangs cannot be interrupted, not even by SIGKILL. So the
// helper does it, and the run waits for the helper's answer; that wait can be interrupted.
#pragma once

#include <cstddef>
#include <string_view>

namespace wivex::console_helper {

/// The longest text that the helper takes at once.
inline constexpr std::size_t longest_text = 4096;

/// Starts the helper for those of standard output and standard error that are files on a file
/// system that may hang. Without one of these, or when no process can be started, the files are
/// written directly.
void start();

/// True when the helper writes to `fd`.
bool serves(int fd);

/// True while the helper has not yet written what it was sent last.
bool busy();

/// Readable once a busy helper has written its text.
int descriptor();

/// Takes the answer of the helper from `descriptor()`.
void take_word();

/// Hands `text` (not empty, not too long) to a helper that is not busy. When the helper is gone,
/// nobody is served any more and the result is false.
bool send(int fd, std::string_view text);

} // namespace wivex::console_helper

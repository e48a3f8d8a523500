// SPDX-License-Identifier: Apache-2.0
// The console: every line that the tool prints goes through here.
//
// Standard output is line-buffered whatever it is connected to. A reader that has stopped reading
// cannot wedge the run: the process waits for it where an interrupt is let in. Once the termination
// handler is at work, it writes its results first and then waits for a slow reader, but not for one
// that takes nothing any more.
#pragma once

namespace wivex {

/// Prints to standard output; complete lines are written at once, the rest at the next flush.
[[gnu::format(printf, 1, 2)]] void print_out(const char* format, ...);

/// Flushes standard output and prints to standard error.
[[gnu::format(printf, 1, 2)]] void print_err(const char* format, ...);

/// Prints `prefix`, ": ", the text of `error` and a newline to standard error.
void print_error(const char* prefix, int error);

/// Writes what standard output still holds. Called before a wait, before a child and at exit.
void flush_out();

/// From here on, console files on a file system that may hang cannot hold the run. Called once,
/// when interrupts are held.
void shield_from_hanging_files();

} // namespace wivex

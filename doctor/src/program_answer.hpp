// SPDX-License-Identifier: Apache-2.0
// What a program says when it is started with one word, in a limited time.
#pragma once

#include <string>

namespace wivex::doctor {

struct ProgramAnswer {
    /// It could be started, and ended in time.
    bool ended = false;
    /// The beginning of what it printed on both streams.
    std::string text;
};

/// Starts the program at `path` without a shell and without an input. One that does not end in
/// three seconds is ended.
ProgramAnswer ask_program(const std::string& path, const char* word);

} // namespace wivex::doctor

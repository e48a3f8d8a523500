// SPDX-License-Identifier: Apache-2.0
// What an option letter chooses: a row for each check and each mode.
//
// The command line sets the row's flag, start creates its record, the run loop runs it and records
// what it returns. Adding a mode is adding a row.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"
#include "common/run_options.hpp"

#include <span>

namespace wivex {

/// A code that is recorded under another number.
struct Translation {
    ErrorCode returned;
    ErrorCode recorded;
};

/// A mode that the run loop knows only by what it returns: 0, or a code.
struct Script {
    ErrorCode (*run)(RunConfig& config);
    /// Codes recorded as themselves, once for each time they are listed; others are dropped.
    std::span<const ErrorCode> recorded;
    std::span<const Translation> translated;
    /// Seconds.
    int pause_after_failure;
};

struct ModeRow {
    char letter;
    std::int32_t RunOptions::*chosen;
    /// Index of its record, or -1 when it has none.
    int test_case;
    /// What is tested, as the documents call it.
    const char* title;
    /// Null for what the run loop does by itself.
    const Script* script;
};

/// All rows. Of the scripts the first chosen one runs.
std::span<const ModeRow> mode_table();

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Where to look first when something failed: the last column of docs/failure-codes.md, from which
// the build takes it.
#pragma once

#include "model/run.hpp"

#include <span>
#include <string_view>
#include <vector>

namespace wivex::report {

struct AdviceRow {
    Cause cause;
    /// The mode that it is for; `Mode::unknown`: for all.
    Mode mode;
    /// The console text that leads to it, one of those in the document.
    std::string_view text;
    /// What to look at first; names and commands stand in `backquotes`.
    std::string_view look_at;
};

std::span<const AdviceRow> advice_rows();

/// What to look at first in `run` for `cause`: going by the console lines of its failures, or all
/// that may help when these do not tell.
std::vector<std::string_view> advice_on(const Run& run, Cause cause);

} // namespace wivex::report

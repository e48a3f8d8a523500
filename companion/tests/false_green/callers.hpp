// SPDX-License-Identifier: Apache-2.0
// What a caller can say beside a console: which unit it was, where, the how many-th time, and which
// limits hold. None of it may make a run good, and the id of a run depends on some of it only.
#pragma once

#include <cstddef>
#include <string>

namespace report_test {

/// What a console is shown as.
struct Shown {
    bool green = false;
    /// Its runs failed in nothing as far as limits tell.
    bool limits_kept = false;

    bool operator==(const Shown&) const = default;
};

/// Callers that set limits; the first says nothing else.
std::size_t caller_count();

/// As the caller of this number, taken modulo their count, is shown it.
Shown shown_as(const std::string& console, std::size_t caller = 0);

/// What the caller changes although he must not, or fails to change: in words; empty: nothing.
/// Reads the console as every caller, and as one without limits.
std::string wrong_by_caller(const std::string& console);

} // namespace report_test

// SPDX-License-Identifier: Apache-2.0
// Keeps what a reader wants to see of a failure: the lines before it and the one behind it.
#pragma once

#include "model/run.hpp"
#include "reader/recent_lines.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wivex::report {

class FailureKeeper {
public:
    /// What `describe` returns when no more details are kept.
    static constexpr std::size_t not_kept = most_detailed_failures;

    /// The next line of the console; `run` may be null.
    void add_line(Run* run, std::string_view line);

    const RecentLines& recent() const {
        return recent_;
    }

    /// A new run: no excerpt is open.
    void forget() {
        lines_to_come_ = 0;
    }

    /// Describes a failure that the last line told. Returns its place in `run.failures`.
    std::size_t describe(Run& run, Failure failure);

private:
    RecentLines recent_;
    /// The failure whose excerpt still takes the lines that follow.
    std::size_t open_ = 0;
    int lines_to_come_ = 0;
};

/// Counts a failure that the tool records.
void count_failure(Run& run, Cause cause, std::uint32_t iteration);

/// Counts what was told and did not end the test.
void count_warning(Run& run, Cause cause, std::uint32_t iteration);

} // namespace wivex::report

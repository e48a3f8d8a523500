// SPDX-License-Identifier: Apache-2.0
#include "reader/failure_keeper.hpp"

#include "common/printable.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

constexpr std::size_t lines_before_failure = 6;
constexpr int lines_after_failure = 1;

// Called before the new one is counted.
void note_iteration(CauseCount& count, std::uint32_t iteration) {
    if (count.failures + count.warnings == 0) {
        count.first_iteration = iteration;
    }
    count.last_iteration = iteration;
}

} // namespace

void FailureKeeper::add_line(Run* run, std::string_view line) {
    recent_.add(line);
    if (lines_to_come_ > 0 && run != nullptr && open_ < run->failures.size()) {
        --lines_to_come_;
        run->failures[open_].lines.push_back(printable(line, RecentLines::width));
    }
}

std::size_t FailureKeeper::describe(Run& run, Failure failure) {
    CauseCount& count = run.causes.at(index_of(failure.cause));
    ++run.sub_causes.at(index_of(failure.cause)).at(static_cast<std::size_t>(failure.sub_cause));
    if (run.failures.size() >= most_detailed_failures ||
        count.detailed >= most_detailed_failures_of_cause) {
        return not_kept;
    }
    ++count.detailed;
    failure.phase = row_of(failure.cause).phase;
    const std::size_t shown = std::min(recent_.size(), lines_before_failure);
    for (std::size_t back = shown; back > 0; --back) {
        failure.lines.push_back(printable(recent_.before_last(back - 1), RecentLines::width));
    }
    failure.shown_at = failure.lines.empty() ? 0 : failure.lines.size() - 1;
    run.failures.push_back(std::move(failure));
    open_ = run.failures.size() - 1;
    lines_to_come_ = lines_after_failure;
    return open_;
}

void count_failure(Run& run, Cause cause, std::uint32_t iteration) {
    CauseCount& count = run.causes.at(index_of(cause));
    note_iteration(count, iteration);
    ++count.failures;
}

void count_warning(Run& run, Cause cause, std::uint32_t iteration) {
    CauseCount& count = run.causes.at(index_of(cause));
    note_iteration(count, iteration);
    ++count.warnings;
}

} // namespace wivex::report

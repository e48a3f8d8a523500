// SPDX-License-Identifier: Apache-2.0
// When a failure counts.

#include "reader/log_builder.hpp"

namespace wivex::report {

std::size_t LogBuilder::describe(Cause cause, bool warning, bool concluded) {
    Failure failure;
    failure.cause = cause;
    failure.sub_cause = explains(current_.sub_cause, cause) ? current_.sub_cause : SubCause::none;
    failure.iteration = current_.record.number;
    failure.line = log_.lines;
    failure.warning = warning;
    failure.concluded = concluded;
    return failures_.describe(*run_, std::move(failure));
}

void LogBuilder::warn(Cause cause) {
    count_warning(*run_, cause, current_.record.number);
    current_.record.warned = true;
    describe(cause, true, false);
}

// A check is recorded as it is told. A mode returns first: its session is closed, which can be
// interrupted, and only then does the run loop record the code.
void LogBuilder::fail(Cause cause, bool concluded) {
    if (row_of(cause).test_case != 0) {
        current_.check_failed = true;
        describe(cause, false, false);
        count_failure(*run_, cause, current_.record.number);
        return;
    }
    if (current_.mode_failed) {
        return;
    }
    current_.mode_failed = true;
    current_.mode_passed = false;
    current_.pending = PendingFailure{cause, describe(cause, false, concluded)};
    // Without an open session nothing is waited for before the code is recorded.
    if (cause == Cause::session_not_open) {
        commit_pending();
    }
}

void LogBuilder::commit_pending() {
    if (!current_.pending) {
        return;
    }
    const Cause cause = current_.pending->cause;
    current_.pending.reset();
    count_failure(*run_, cause, current_.record.number);
    const bool counted = records_of(cause, run_->mode) != 0 || run_->mode == Mode::unknown;
    current_.record.outcome = counted ? Outcome::failed : Outcome::uncounted;
}

void LogBuilder::conclude_missing_failure() {
    if (current_.mode_failed || current_.mode_passed || run_->has_standard_error ||
        (!current_.mode_seen && !current_.session_trouble)) {
        return;
    }
    const Cause cause = current_.missing_failure(run_->mode);
    if (cause == Cause::none) {
        return;
    }
    judge(row_of(cause).phase, Verdict::failed);
    fail(cause, true);
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The verdict on a run: defined here and nowhere else. Whatever is shown, written or returned as a
// status asks for it here.
//
// A run has passed only when its console shows that it began, that every iteration was seen to its
// end, that nothing failed, that the result file was written, that no results were lost, and that
// the tool came to its end. What cannot be judged is not known, and that is never a pass.
#pragma once

#include "model/run.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace wivex::report {

struct Judgement {
    RunVerdict verdict = RunVerdict::unknown;
    /// In words: what keeps the run from having passed, the weightiest first. Empty for a pass.
    std::vector<std::string> missing;
    /// The console shows the whole run: its frame, and every iteration from its beginning to its
    /// end.
    bool whole = false;

    bool is_green() const {
        return verdict == RunVerdict::passed;
    }
};

Judgement judge(const Run& run);

/// How many runs of a console have each verdict, those that were left out included.
std::array<std::uint32_t, run_verdict_count> verdicts_of(const Log& log);

/// The verdict on all runs of a console, those that were left out included.
RunVerdict judge(const Log& log);

/// The verdict on a run in one sentence.
std::string verdict_sentence(const Run& run);

/// The verdict on all runs of a console in one sentence.
std::string verdict_sentence(const Log& log);

} // namespace wivex::report

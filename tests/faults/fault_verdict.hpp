// SPDX-License-Identifier: Apache-2.0
// Whether a run, one of whose system calls failed, ended as a run may end.
#pragma once

#include "bench_run.hpp"
#include "fault_plan.hpp"

#include <string>

namespace faults {

enum class Outcome {
    /// Right results, or a failure that was told and recorded.
    good,
    /// Ended by a signal, or with a status that the tool does not have.
    crash,
    /// Did not end.
    hang,
    /// Results are missing, and nothing on the console says so.
    lost_verdict,
    /// Results say what did not happen.
    false_verdict,
    /// The call was not made, or the bench itself failed: nothing was tried.
    not_tried
};

const char* name_of(Outcome outcome);

struct FaultVerdict {
    Outcome outcome = Outcome::not_tried;
    std::string problem;
};

/// Judges `run` beside `whole`, the run of the same mode in which no call failed. Both have their
/// streams together.
FaultVerdict judge(const Fault& fault, const bench_test::BenchRun& whole,
                   const bench_test::BenchRun& run);

} // namespace faults

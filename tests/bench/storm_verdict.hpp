// SPDX-License-Identifier: Apache-2.0
// What an interrupted run must have left, told from its console alone.
#pragma once

#include "bench_run.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bench_test {

enum class Verdict {
    good,
    /// The signal met the default action: no handler stood yet.
    before_the_handler,
    /// The run had come to its own end.
    after_the_end,
    /// The run did not end.
    wedged,
    /// It ended too late.
    late,
    /// Results are missing, or lines that somebody would have read.
    lost,
    bad
};

struct Judgement {
    Verdict verdict = Verdict::bad;
    /// From the signal to the end of the tool.
    double reaction_ms = 0;
    std::string problem;
};

/// How long a run takes from a signal to its end.
struct Reaction {
    /// Nothing when the run ended before the signal.
    std::optional<double> ms;
    double limit_ms = 1000;
};

/// From the first signal that the bench sent.
Reaction reaction_to_first_signal(const BenchRun& run, double limit_ms = 1000);

/// From the last one.
Reaction reaction_to_last_signal(const BenchRun& run, double limit_ms);

/// Judges a run with both streams in one, all of them read, that got SIGINT or SIGTERM; of several
/// signals the handler takes one, whichever it was.
Judgement judge(const BenchRun& run, const std::vector<std::string>& arguments,
                const Reaction& reaction);

/// Judges a run whose console was not read to its end: it must end in time; SIGINT leaves a whole
/// result file, SIGTERM none.
Judgement judge_unread(const BenchRun& run, const std::vector<std::string>& arguments, int signal,
                       const Reaction& reaction);

/// Judges a run that was killed while its result file could not be opened: it must end in time and
/// say so.
Judgement judge_blocked(const BenchRun& run, const Reaction& reaction);

} // namespace bench_test

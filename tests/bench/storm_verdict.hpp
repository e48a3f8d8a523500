// What an interrupted run must have left, told from its console alone.
#pragma once

#include "bench_run.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace bench_test {

/// The result files that go with the console of a run that was interrupted. There can be two: the
/// last iteration can have shown a failure that it had not filed yet, because its session was
/// still to be closed. `arguments` are those of the tool.
std::vector<std::string> possible_result_files(std::string_view console,
                                               const std::vector<std::string>& arguments);

enum class Verdict {
    good,
    /// The signal met the default action: no handler stood yet.
    before_the_handler,
    /// The run had come to its own end.
    after_the_end,
    bad
};

struct Judgement {
    Verdict verdict = Verdict::bad;
    /// From the signal to the end of the tool.
    double reaction_ms = 0;
    std::string problem;
};

/// Judges a run with both streams in one that got SIGINT or SIGTERM; of several signals the
/// handler takes one, whichever it was.
Judgement judge(const BenchRun& run, const std::vector<std::string>& arguments);

} // namespace bench_test

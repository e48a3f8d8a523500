// SPDX-License-Identifier: Apache-2.0
// How a storm interrupts a run: each kind draws a run, does to it what it is named after, and
// judges what the run left.
#pragma once

#include "storm_verdict.hpp"

#include <random>
#include <span>
#include <string>

namespace bench_test {

/// One interrupted run.
struct Attempt {
    /// What ran, to count by.
    std::string life;
    /// All that was drawn, for a person.
    std::string description;
    Judgement judgement;
    BenchRun run;
};

struct StormKind {
    const char* name;
    /// `index` is the number of the run in its storm.
    Attempt (*attempt)(int index, std::mt19937& random);
};

/// "signals": SIGINT or SIGTERM at a random moment.
/// "typed": ^C typed at a terminal, so that the tool and all its children get it.
/// "stalled": a console that stops being read, then a signal.
/// "slow": a console that is read at 3 kB a second, then a signal.
/// "blocked": files whose opening never ends, then a signal.
std::span<const StormKind> storm_kinds();

} // namespace bench_test

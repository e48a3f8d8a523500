// SPDX-License-Identifier: Apache-2.0
// The runs whose system calls fail one by one: every mode of the tool, each chip, and both ways to
// end a run early.
#pragma once

#include "bench_run.hpp"

#include <array>
#include <span>
#include <string>
#include <vector>

namespace faults {

/// How a run ends when nothing fails.
enum class Ending {
    /// With its result file.
    regular,
    /// By SIGINT, with its result file.
    interrupted,
    /// By SIGTERM, without one.
    killed,
    /// With a line on the console alone (softAP).
    console_only
};

struct Mode {
    const char* name;
    const char* arguments;
    const char* scenario;
    const char* lines;
    /// What the bench sends, in its own words; empty for none.
    const char* signal;
    Ending ending;
};

std::span<const Mode> modes();

/// The mode with this name, or null.
const Mode* find_mode(const std::string& name);

std::vector<std::string> arguments_of(const Mode& mode);

/// A run of the mode on the bench, the tool under the tracer with these options.
bench_test::BenchRun run_traced(const Mode& mode, const std::string& tracer_options);

} // namespace faults

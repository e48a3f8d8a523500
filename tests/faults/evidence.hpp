// SPDX-License-Identifier: Apache-2.0
// What a run shows and leaves, compared with the run in which nothing failed.
#pragma once

#include "bench_run.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace faults {

/// The elements of `whole` that are missing in `part`, each as often as it is missing.
std::vector<std::string> missing(std::vector<std::string> whole, std::vector<std::string> part);

/// Whether a line of the console speaks of a failure: in the tool's words, or in the system's for
/// an error number.
bool speaks_of_failure(std::string_view line);

/// Lines of `run` about a failure that `whole` does not have.
std::vector<std::string> failures_told(const bench_test::BenchRun& whole,
                                       const bench_test::BenchRun& run);

/// What shows in `whole` that a step was done, and is missing in `run`: commands that the
/// supplicant received, lines about a success, files that were written, requests that the driver,
/// the chip and the kernel got.
std::vector<std::string> steps_missing(const bench_test::BenchRun& whole,
                                       const bench_test::BenchRun& run);

} // namespace faults

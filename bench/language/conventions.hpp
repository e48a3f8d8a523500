// SPDX-License-Identifier: Apache-2.0
// What the parts of the bench agree on.
#pragma once

namespace bench {

/// Exit status when the bench itself fails.
inline constexpr int bench_failure = 125;

/// Where the scenario stands in the world, for the libraries that are loaded into the tool.
inline constexpr const char* scenario_in_world = "/bench/scenario";

/// What the counterparts log in the world; all of it is left behind.
inline constexpr const char* log_folder = "/bench/log";

} // namespace bench

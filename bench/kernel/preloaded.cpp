// SPDX-License-Identifier: Apache-2.0
#include "kernel/preloaded.hpp"

#include "language/conventions.hpp"
#include "language/files.hpp"

#include <errno.h>
#include <time.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace bench {

Scenario played_scenario() {
    std::string problem;
    auto scenario =
        parse_scenario(read_file(scenario_in_world).value_or(""), scenario_in_world, problem);
    if (!scenario) {
        std::fprintf(stderr, "%s\n", problem.c_str());
        std::_Exit(bench_failure);
    }
    return std::move(*scenario);
}

void pause_ms(int milliseconds) {
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

} // namespace bench

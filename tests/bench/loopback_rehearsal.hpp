// SPDX-License-Identifier: Apache-2.0
// What the loopback tests of all chip families have in common.
#pragma once

#include "chip_rehearsal.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace bench_test {

inline const std::string success = "[WIFI]LOOPBACK SUCCESS\n";
inline const std::string failure = "[WIFI]### LOOPBACK FAIL ###\n";

inline void expect_pass(const ChipRehearsal& run) {
    expect_results(run, result_of(4, 0));
}

inline void expect_failure(const ChipRehearsal& run) {
    expect_results(run, result_of(4, 1));
}

/// What an ath6kl loopback does with the register files.
inline const std::string ath6kl_steps = "aow 2\n"
                                        "aow 3\n"
                                        "reg_addr 0x40bf38\n"
                                        "reg_dump\n"
                                        "reg_addr 0x40bf34\n"
                                        "reg_dump\n";

/// A loopback that fails, and all that it prints before it says so.
struct FailedLoopback {
    const char* name;
    const char* scenario;
    std::string diagnostics;
    const char* err = "";
    std::string results = result_of(4, 1);
};

inline void PrintTo(const FailedLoopback& loopback, std::ostream* out) {
    *out << loopback.scenario;
}

inline ChipRehearsal expect_failed_loopback(const FailedLoopback& loopback) {
    ChipRehearsal run(loopback.scenario, {"-l"});
    EXPECT_EQ(loopback.diagnostics + failure, run.diagnostics());
    EXPECT_EQ(loopback.err, run.err());
    expect_results(run, loopback.results);
    return run;
}

} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// What an iteration consists of: its phases, and the verdicts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wivex::report {

enum class Phase : std::uint8_t {
    module,
    driver,
    mac,
    loopback,
    session,
    scan,
    associate,
    find,
    negotiate,
    group,
    dhcp,
    traffic,
    serve,
    disconnect,
    removal,
    none,
};

constexpr std::size_t phase_count = static_cast<std::size_t>(Phase::none);

/// Of a phase, in the order of weight: the worst of several holds.
enum class Verdict : std::uint8_t { none, passed, warned, unfinished, failed };

constexpr std::size_t verdict_count = 5;

/// Of an iteration. `uncounted`: the mode failed in a way that the tool's result file leaves out.
enum class Outcome : std::uint8_t { passed, failed, uncounted, unfinished };

constexpr std::size_t outcome_count = 4;

/// How a run ended, as far as the console tells.
enum class RunEnd : std::uint8_t {
    open,
    finished,
    interrupted,
    killed,
    softap,
    not_started,
    broke_off,
};

/// On a whole run: see model/verdict.hpp.
enum class RunVerdict : std::uint8_t { passed, failed, interrupted, unknown };

constexpr std::size_t run_verdict_count = 4;

constexpr std::size_t index_of(Phase phase) {
    return static_cast<std::size_t>(phase);
}

constexpr std::array<Phase, phase_count> all_phases() {
    std::array<Phase, phase_count> phases{};
    for (std::size_t i = 0; i < phase_count; ++i) {
        phases[i] = static_cast<Phase>(i);
    }
    return phases;
}

/// The short names that stand in run.json and junit.xml.
std::string_view name_of(Phase phase);
std::string_view name_of(Verdict verdict);
std::string_view name_of(Outcome outcome);
std::string_view name_of(RunEnd end);
std::string_view name_of(RunVerdict verdict);

/// "killed: the tool wrote no result file".
std::string_view words_of(RunEnd end);

/// What such an end leaves open about the run; empty: nothing.
std::string_view missing_words(RunEnd end);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "model/phases.hpp"

namespace wivex::report {

namespace {

constexpr std::array<std::string_view, phase_count + 1> phase_names{
    "module",    "driver", "mac",  "loopback", "session", "scan",       "associate", "find",
    "negotiate", "group",  "dhcp", "traffic",  "serve",   "disconnect", "removal",   "none"};

constexpr std::array<std::string_view, verdict_count> verdict_names{"none", "passed", "warned",
                                                                    "unfinished", "failed"};

constexpr std::array<std::string_view, outcome_count> outcome_names{
    "passed", "failed", "failed-uncounted", "unfinished"};

constexpr std::array<std::string_view, 7> end_names{
    "open", "finished", "interrupted", "killed", "softap", "not-started", "broke-off"};

constexpr std::array<std::string_view, run_verdict_count> run_verdict_names{
    "passed", "failed", "interrupted", "unknown"};

template <typename Names, typename Value>
std::string_view name_in(const Names& names, Value value) {
    const auto index = static_cast<std::size_t>(value);
    return index < names.size() ? names[index] : std::string_view("?");
}

} // namespace

std::string_view name_of(Phase phase) {
    return name_in(phase_names, phase);
}

std::string_view name_of(Verdict verdict) {
    return name_in(verdict_names, verdict);
}

std::string_view name_of(Outcome outcome) {
    return name_in(outcome_names, outcome);
}

std::string_view name_of(RunEnd end) {
    return name_in(end_names, end);
}

std::string_view name_of(RunVerdict verdict) {
    return name_in(run_verdict_names, verdict);
}

} // namespace wivex::report

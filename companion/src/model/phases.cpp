// SPDX-License-Identifier: Apache-2.0
#include "model/phases.hpp"

#include "common/enum_rows.hpp"

namespace wivex::report {

namespace {

constexpr std::array<std::string_view, phase_count + 1> phase_names{
    "module",    "driver", "mac",  "loopback", "session", "scan",       "associate", "find",
    "negotiate", "group",  "dhcp", "traffic",  "serve",   "disconnect", "removal",   "none"};

constexpr std::array<std::string_view, verdict_count> verdict_names{"none", "passed", "warned",
                                                                    "unfinished", "failed"};

constexpr std::array<std::string_view, outcome_count> outcome_names{
    "passed", "failed", "failed-uncounted", "unfinished"};

struct EndRow {
    std::string_view name;
    std::string_view words;
    std::string_view missing;
};

constexpr std::array<EndRow, 7> ends{{
    {"open", "the console ends in the middle of the run",
     "the console ends in the middle of the run"},
    {"finished", "finished", ""},
    {"interrupted", "interrupted by ^C", ""},
    {"killed", "killed: the tool wrote no result file", "the run was killed"},
    {"softap", "softAP mode: one iteration, no result file", ""},
    {"not-started", "the tool ended before its first iteration", ""},
    {"broke-off", "broken off: another run begins without an end of this one",
     "the run broke off: another one begins before its end"},
}};

constexpr std::array<std::string_view, run_verdict_count> run_verdict_names{
    "passed", "failed", "interrupted", "unknown"};

} // namespace

std::string_view name_of(Phase phase) {
    return row_at(phase_names, phase);
}

std::string_view name_of(Verdict verdict) {
    return row_at(verdict_names, verdict);
}

std::string_view name_of(Outcome outcome) {
    return row_at(outcome_names, outcome);
}

std::string_view name_of(RunEnd end) {
    return row_at(ends, end).name;
}

std::string_view words_of(RunEnd end) {
    return row_at(ends, end).words;
}

std::string_view missing_words(RunEnd end) {
    return row_at(ends, end).missing;
}

std::string_view name_of(RunVerdict verdict) {
    return row_at(run_verdict_names, verdict);
}

} // namespace wivex::report

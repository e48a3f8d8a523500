// SPDX-License-Identifier: Apache-2.0
#include "writers/summary.hpp"

#include "common/words.hpp"
#include "model/identity.hpp"
#include "model/limit_verdict.hpp"
#include "model/test_cases.hpp"
#include "model/verdict.hpp"
#include "model/weak_passes.hpp"
#include "writers/limit_words.hpp"
#include "writers/run_words.hpp"

namespace wivex::report {

namespace {

std::string behind(const Run& run, Cause cause) {
    std::string text;
    for (const auto& [sub_cause, count] : run.behind(cause)) {
        text += std::string(text.empty() ? ": " : ", ") + std::string(words_of(sub_cause)) + " (" +
                std::to_string(count) + ")";
    }
    return text;
}

std::string summary_of_causes(const Run& run) {
    std::string text;
    for (const Cause cause : run.told_causes()) {
        const CauseCount& count = run.count(cause);
        if (count.failures + count.warnings != 0) {
            text += "  " + std::to_string(count.failures + count.warnings) + " x " +
                    cause_words(cause) + behind(run, cause) +
                    (count.failures == 0 ? " (warning)" : "") + "\n";
        }
    }
    return text;
}

std::string summary_of_limits(const std::vector<LimitResult>& results) {
    std::string text;
    if (!results.empty()) {
        text += "  " + limits_sentence(results) + "\n";
    }
    for (const LimitResult& result : results) {
        if (result.verdict != LimitVerdict::within) {
            text += "    " + limit_sentence(result) + "\n";
        }
    }
    return text;
}

} // namespace

std::string summary(const Run& run) {
    const Judgement judgement = judge(run);
    std::string text = std::string(title_of(run.mode)) + ": " + verdict_sentence(run) + " (" +
                       std::string(name_of(run.end)) + ")\n";
    for (const TestCaseCount& row : test_cases_of(run)) {
        if (row.failures != 0) {
            text += "  test case " + std::to_string(row.number) + " (" + std::string(row.title) +
                    "): " + count_text(row.failures, "failure", "failures") + " recorded\n";
        }
    }
    text += summary_of_causes(run);
    // The first one stands in the sentence above.
    for (std::size_t i = 1; i < judgement.missing.size(); ++i) {
        text += "  not passed: " + judgement.missing[i] + "\n";
    }
    for (const std::string& weak : weak_passes(run)) {
        text += "  note: " + weak + "\n";
    }
    if (run.failures_without_test_case() != 0) {
        text += "  the console does not tell the mode: give it with --mode\n";
    }
    if (run.throughput.count != 0) {
        text += "  throughput " + figure_text(run.throughput.least) + " to " +
                figure_text(run.throughput.most) + " Mbit/s, mean " +
                figure_text(run.throughput.mean()) + "\n";
    }
    text += summary_of_limits(judge_limits(run));
    return text;
}

std::string summary(const Log& log) {
    std::string text;
    for (const std::string& warning : identity_warnings(log)) {
        text += "WARNING: " + warning + "\n";
    }
    if (const std::string unit = identity_sentence(log.identity); !unit.empty()) {
        text += unit + "\n";
    }
    for (const Run& run : log.runs) {
        text += summary(run);
    }
    if (log.runs.size() > 1) {
        text += verdict_sentence(log) + "\n";
    }
    if (log.runs.size() + log.dropped_runs > 1 && !log.limits.empty()) {
        text += limits_sentence(judge_limits(log)) + "\n";
    }
    return text;
}

} // namespace wivex::report

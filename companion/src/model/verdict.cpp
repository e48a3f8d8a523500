// SPDX-License-Identifier: Apache-2.0
#include "model/verdict.hpp"

#include "common/words.hpp"
#include "model/weak_passes.hpp"

#include <algorithm>
#include <cctype>

namespace wivex::report {

namespace {

using Words = std::vector<std::string>;

std::string failed_words(const Run& run) {
    return std::to_string(run.failed()) + " of " + iterations_text(run.started) + " failed";
}

std::string quoted(const NotedLines& lines) {
    return lines.first.empty() ? "" : ": \"" + lines.first.front() + "\"";
}

// What shows that the run was bad.
void add_failures(const Run& run, Words& words) {
    if (run.end == RunEnd::not_started) {
        words.emplace_back("the tool ended before its first iteration");
    }
    if (run.failed() != 0) {
        words.push_back(failed_words(run));
    }
    for (const Cause cause : run.told_causes()) {
        const CauseCount& count = run.count(cause);
        const std::string name = std::string(row_of(cause).words);
        if (count.warnings != 0 && !is_weak_pass(cause)) {
            words.push_back(name + ": " + count_text(count.warnings, "time", "times") +
                            "; the test went on, and the result file does not count it");
        }
        if (count.unrecorded != 0) {
            words.push_back(name + ": " + count_text(count.unrecorded, "time", "times") +
                            " at the interrupt, before the tool counted it");
        }
    }
    // When iterations were split wrongly, it is unclear whose failure it was.
    if (run.all_failures() != 0 && run.failed() == 0) {
        words.push_back(count_text(run.all_failures(), "failure was", "failures were") +
                        " recorded");
    }
    if (run.evidence.losses.count != 0) {
        words.push_back("the tool lost results or ended early" + quoted(run.evidence.losses));
    }
}

// A frame that is not whole: nothing is known of what is missing.
void add_gaps_in_frame(const Run& run, Words& words) {
    const Evidence& evidence = run.evidence;
    if (run.end == RunEnd::not_started) {
        return;
    }
    if (!missing_words(run.end).empty()) {
        words.emplace_back(missing_words(run.end));
    }
    if (!evidence.began) {
        words.emplace_back("the beginning of the run is not in this console");
    }
    if (run.mode == Mode::softap) {
        words.push_back("the softAP mode writes no result file and tries no access point");
        return;
    }
    if (!run.result_written) {
        words.emplace_back("no result file was announced");
    }
    if (!evidence.ended && (run.end == RunEnd::finished || run.end == RunEnd::interrupted)) {
        words.emplace_back("the end of the tool is not in this console");
    }
}

void add_unknown_lines(const Run& run, Words& words) {
    const NotedLines& unknown = run.evidence.unknown;
    if (unknown.count != 0) {
        words.push_back(count_text(unknown.count, "line", "lines") +
                        " of the tool that this program does not know" + quoted(unknown));
    }
}

void add_unjudged_check(const Run& run, Phase phase, bool always, Words& words) {
    const std::uint32_t judged = run.evidence.judged_in(phase);
    if (judged != run.started && (always || judged != 0)) {
        words.push_back("the " + std::string(name_of(phase)) + " check has a verdict in only " +
                        std::to_string(judged) + " of " + iterations_text(run.started));
    }
}

// Each iteration has to show by itself that it passed.
void add_gaps_in_iterations(const Run& run, Words& words) {
    if (run.started == 0) {
        words.emplace_back("no iteration is in this console");
        return;
    }
    const std::uint32_t completed = run.count(Outcome::passed) + run.failed();
    if (completed < run.started) {
        words.push_back(iterations_text(run.started - completed) + " did not come to the end");
    }
    add_unjudged_check(run, Phase::module, true, words);
    add_unjudged_check(run, Phase::driver, true, words);
    add_unjudged_check(run, Phase::mac, false, words);
    add_unjudged_check(run, Phase::loopback, false, words);
    const std::uint32_t accounted = run.evidence.mode_passes + run.failed();
    if (test_case_of(run.mode) != 0 && accounted < run.started) {
        words.push_back("the mode showed a pass in only " +
                        std::to_string(run.evidence.mode_passes) + " of " +
                        iterations_text(run.started));
    }
    const bool checked =
        run.evidence.judged_in(Phase::mac) != 0 || run.evidence.judged_in(Phase::loopback) != 0;
    if (run.mode == Mode::unknown || (run.mode == Mode::checks && !checked)) {
        words.emplace_back("the console does not tell which mode ran");
    }
    if (run.expected > run.started) {
        words.push_back("only " + std::to_string(run.started) + " of " +
                        iterations_text(run.expected) + " began");
    }
}

// A group of its own is served until somebody interrupts it.
void add_unserved_group(const Run& run, Words& words) {
    if (run.mode != Mode::go) {
        return;
    }
    if (run.end == RunEnd::finished) {
        words.emplace_back("the group ended by itself");
    }
    if (run.clients_served == 0) {
        words.emplace_back("no client was served");
    }
}

std::string capitalised(std::string text) {
    if (!text.empty()) {
        text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    }
    return text;
}

std::string passed_words(const Run& run) {
    const std::string words = run.started == 1
                                  ? "The iteration passed"
                                  : "All " + std::to_string(run.started) + " iterations passed";
    return words + (run.warned == 0 ? "" : ", " + std::to_string(run.warned) + " with a warning");
}

std::string passed_and_none_failed(const Run& run) {
    return std::to_string(run.count(Outcome::passed)) + " of " + iterations_text(run.started) +
           " passed, none failed";
}

std::string unknown_words(const Run& run, const Words& missing) {
    return "Not known" + (missing.empty() ? "" : ": " + missing.front()) +
           (run.started == 0 ? "" : "; " + passed_and_none_failed(run));
}

} // namespace

Judgement judge(const Run& run) {
    Words failures;
    add_failures(run, failures);
    Words gaps;
    add_gaps_in_frame(run, gaps);
    add_unknown_lines(run, gaps);
    const bool whole_frame = gaps.empty();
    add_gaps_in_iterations(run, gaps);
    add_unserved_group(run, gaps);
    const bool interrupted =
        run.end == RunEnd::interrupted && (run.mode != Mode::go || !gaps.empty());

    Judgement judgement;
    if (!failures.empty()) {
        judgement.verdict = RunVerdict::failed;
    } else if (interrupted && whole_frame && run.started != 0) {
        judgement.verdict = RunVerdict::interrupted;
        failures.push_back("the run was ended by ^C");
    } else if (gaps.empty() && !interrupted) {
        judgement.verdict = RunVerdict::passed;
    }
    judgement.whole = gaps.empty() && run.evidence.losses.count == 0;
    judgement.missing = std::move(failures);
    std::ranges::move(gaps, std::back_inserter(judgement.missing));
    return judgement;
}

std::array<std::uint32_t, run_verdict_count> verdicts_of(const Log& log) {
    std::array<std::uint32_t, run_verdict_count> counts = log.dropped_verdicts;
    for (const Run& run : log.runs) {
        ++counts.at(static_cast<std::size_t>(judge(run).verdict));
    }
    return counts;
}

RunVerdict judge(const Log& log) {
    const std::array<std::uint32_t, run_verdict_count> counts = verdicts_of(log);
    if (log.runs.empty()) {
        return RunVerdict::unknown;
    }
    for (const RunVerdict verdict :
         {RunVerdict::failed, RunVerdict::unknown, RunVerdict::interrupted}) {
        if (counts.at(static_cast<std::size_t>(verdict)) != 0) {
            return verdict;
        }
    }
    return RunVerdict::passed;
}

std::string verdict_sentence(const Run& run) {
    const Judgement judgement = judge(run);
    switch (judgement.verdict) {
    case RunVerdict::passed:
        return passed_words(run);
    case RunVerdict::failed:
        return run.end == RunEnd::not_started ? "The run did not start"
                                              : capitalised(judgement.missing.front());
    case RunVerdict::interrupted:
        return "Interrupted by ^C: " + passed_and_none_failed(run);
    default:
        return unknown_words(run, judgement.missing);
    }
}

std::string verdict_sentence(const Log& log) {
    if (log.runs.empty()) {
        return "No run on this console";
    }
    const std::size_t all = log.runs.size() + log.dropped_runs;
    if (all == 1) {
        return verdict_sentence(log.runs.back());
    }
    const std::array<std::uint32_t, run_verdict_count> counts = verdicts_of(log);
    constexpr std::array<std::string_view, run_verdict_count> words{"passed", "failed",
                                                                    "interrupted", "not known"};
    std::string text = std::to_string(all) + " runs:";
    const char* between = " ";
    for (const std::size_t i : {1U, 3U, 2U, 0U}) {
        if (counts.at(i) != 0) {
            text += between + std::to_string(counts.at(i)) + " " + std::string(words.at(i));
            between = ", ";
        }
    }
    return text;
}

} // namespace wivex::report

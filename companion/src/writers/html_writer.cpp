// SPDX-License-Identifier: Apache-2.0
#include "writers/html_writer.hpp"

#include "common/words.hpp"
#include "model/limit_verdict.hpp"
#include "writers/html_text.hpp"
#include "writers/limit_words.hpp"
#include "writers/page.hpp"
#include "writers/page_distributions.hpp"
#include "writers/page_facts.hpp"
#include "writers/page_failures.hpp"
#include "writers/page_figures.hpp"
#include "writers/page_identity.hpp"
#include "writers/page_limits.hpp"
#include "writers/page_overview.hpp"
#include "writers/page_verdict.hpp"

namespace wivex::report {

namespace {

std::string run_section(const Log& log, const Run& run, std::size_t number) {
    const bool only = log.runs.size() == 1;
    const std::string prefix = only ? "" : "run" + std::to_string(number) + "-";
    const Judgement judgement = judge(run);
    std::string text = "\n" + verdict_part(run, judgement, prefix) +
                       limits_card(run, judgement.is_green(), prefix);
    if (run.started != 0) {
        text += tiles(run) + timeline_card(run, prefix) + failures_card(run, prefix) +
                test_cases_card(run, judgement.is_green(), prefix) + throughput_card(run, prefix) +
                signal_card(run, prefix) + phases_card(run, prefix) + times_card(run, prefix) +
                worst_card(run, prefix) + access_points_card(run, prefix);
    }
    text += facts_card(log, run, prefix);
    return element("div", {{"class", "run"}, {"id", prefix + "run"}}, text) + "\n";
}

std::string left_out(const Log& log) {
    if (log.dropped_runs == 0) {
        return "";
    }
    std::string text = count_text(log.dropped_runs, "earlier run", "earlier runs") +
                       " on this console are left out";
    const char* between = ": ";
    for (std::size_t i = 0; i < run_verdict_count; ++i) {
        if (log.dropped_verdicts[i] != 0) {
            text += between + std::to_string(log.dropped_verdicts[i]) + " " +
                    std::string(name_of(static_cast<RunVerdict>(i)));
            between = ", ";
        }
    }
    const bool all_passed =
        log.dropped_verdicts[static_cast<std::size_t>(RunVerdict::passed)] == log.dropped_runs;
    return paragraph(all_passed ? "soft" : "bad", text + ".");
}

std::string run_list(const Log& log) {
    if (log.runs.size() < 2) {
        return "";
    }
    std::string items;
    std::size_t number = 1;
    for (const Run& run : log.runs) {
        const std::string target = "#run" + std::to_string(number) + "-run";
        items += element("li", element("a", {{"href", target}}, escaped(verdict_sentence(run))) +
                                   " " + span("soft", std::string(title_of(run.mode)))) +
                 "\n";
        ++number;
    }
    return verdict_heading(style_of(judge(log)), verdict_sentence(log)) +
           limits_line(judge_limits(log), judge(log) == RunVerdict::passed) +
           element("nav", {{"aria-label", "Runs"}}, element("ol", "\n" + items)) + "\n" +
           left_out(log);
}

// The unit first, so that it stands in a narrow tab; the limits behind the verdict, when there are
// any.
std::string title_of(const Log& log) {
    const std::string limits = limits_sentence(judge_limits(log));
    const std::string& serial = log.identity.serial;
    return (serial.empty() ? "" : serial + ": ") + verdict_sentence(log) +
           (limits.empty() ? "" : "; " + limits);
}

std::string body(const Log& log) {
    std::string text =
        "\n" + element("h1", "wivex test report") + "\n" + identity_part(log) + run_list(log);
    if (log.runs.empty()) {
        text += verdict_heading("open", verdict_sentence(log));
    }
    std::size_t number = 1;
    for (const Run& run : log.runs) {
        text += run_section(log, run, number);
        ++number;
    }
    text += paragraph("soft", "Console: " + count_text(log.lines, "line", "lines") + ", " +
                                  count_text(log.bytes, "byte", "bytes") + ", " +
                                  count_text(log.unknown_lines, "line", "lines") +
                                  " of other programs or unknown.");
    return text;
}

} // namespace

std::string write_html(const Log& log) {
    return html_document("wivex: " + title_of(log), body(log));
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "writers/page_verdict.hpp"

#include "model/limit_verdict.hpp"
#include "model/weak_passes.hpp"
#include "writers/html_text.hpp"
#include "writers/identity_words.hpp"
#include "writers/page.hpp"
#include "writers/page_limits.hpp"

namespace wivex::report {

namespace {

std::string_view end_words(const Run& run) {
    switch (run.end) {
    case RunEnd::interrupted:
        return "interrupted by ^C";
    case RunEnd::killed:
        return "killed: the tool wrote no result file";
    case RunEnd::open:
        return "the console ends in the middle of the run";
    case RunEnd::broke_off:
        return "broken off: another run begins without an end of this one";
    case RunEnd::softap:
        return "softAP mode: one iteration, no result file";
    case RunEnd::not_started:
        return "the tool ended before its first iteration";
    default:
        return "finished";
    }
}

std::string list_of_reasons(const std::vector<std::string>& sentences) {
    if (sentences.empty()) {
        return "";
    }
    std::string items = "\n";
    for (const std::string& sentence : sentences) {
        items += element("li", escaped(sentence)) + "\n";
    }
    return element("ul", {{"class", "reasons"}}, items) + "\n";
}

// What its line says about the check of the driver, turned round.
std::string softap_words(const Run& run) {
    const std::string& line = run.evidence.softap_line;
    if (line.empty()) {
        return "";
    }
    const std::string_view meaning =
        line.find("ERROR") != std::string::npos
            ? "The line is inverted: it says that the driver was ready and the interface up. No "
              "access point was tried."
            : "The line is inverted: it says that the driver was not ready or the interface down. "
              "No access point was made.";
    return paragraph("", "The softAP mode printed \u201c" + escaped(line) + "\u201d. " +
                             std::string(meaning));
}

// Lines that nobody should pass over.
std::string noted_lines(std::string_view title, const NotedLines& lines) {
    if (lines.count == 0) {
        return "";
    }
    std::string text;
    for (const std::string& line : lines.first) {
        text += escaped(line) + "\n";
    }
    if (lines.count > lines.first.size()) {
        text += "and " + std::to_string(lines.count - lines.first.size()) + " more\n";
    }
    return element("h4", title) + "\n" + element("pre", text) + "\n";
}

// Why the run has not passed, and what its passes do not prove.
std::string reasons(const Run& run, const Judgement& judgement, const std::string& prefix) {
    const bool failed = judgement.verdict == RunVerdict::failed;
    // A failed run says its first reason in its heading.
    const bool said = failed && judgement.missing.size() == 1 && run.evidence.losses.count == 0;
    std::string text;
    if (!judgement.missing.empty() && !said) {
        text += card(
            prefix + "why", failed ? "Why it failed" : "What is missing for a pass",
            softap_words(run) + list_of_reasons(judgement.missing) +
                noted_lines("Lines about lost results", run.evidence.losses) +
                noted_lines("Lines of the tool that are not known here", run.evidence.unknown));
    }
    const std::vector<std::string> weak = weak_passes(run);
    if (!weak.empty()) {
        text += card(prefix + "weak", "What the passes do not prove", list_of_reasons(weak));
    }
    return text;
}

} // namespace

std::string_view style_of(RunVerdict verdict, bool weak) {
    switch (verdict) {
    case RunVerdict::passed:
        return weak ? "weak" : "passed";
    case RunVerdict::failed:
        return "failed";
    default:
        return "open";
    }
}

std::string verdict_part(const Run& run, const Judgement& judgement, const std::string& prefix) {
    const std::string moment = began_words(run);
    const std::string began = (moment.empty() ? "" : ", began ") + escaped(moment);
    return verdict_heading(style_of(judgement.verdict, !weak_passes(run).empty()),
                           verdict_sentence(run)) +
           paragraph("soft",
                     std::string(title_of(run.mode)) + ", " + std::string(end_words(run)) + began) +
           limits_line(judge_limits(run), judgement.is_green()) + reasons(run, judgement, prefix);
}

} // namespace wivex::report

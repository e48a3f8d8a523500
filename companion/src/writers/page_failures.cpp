// SPDX-License-Identifier: Apache-2.0
#include "writers/page_failures.hpp"

#include "common/words.hpp"
#include "model/advice.hpp"
#include "model/weak_passes.hpp"
#include "writers/html_text.hpp"
#include "writers/page.hpp"

#include <algorithm>
#include <set>
#include <vector>

namespace wivex::report {

namespace {

std::string excerpt(const Failure& failure, const std::string& anchor) {
    std::string text = "<h4" + anchor + ">Iteration " + std::to_string(failure.iteration) +
                       " <span class=\"soft\">(console line " + std::to_string(failure.line) + ")";
    if (failure.unrecorded) {
        text += " interrupted before the tool counted it";
    }
    if (failure.concluded) {
        text += " concluded from what did not come: standard error is not in this console";
    }
    if (failure.sub_cause != SubCause::none) {
        text += ": " + escaped(words_of(failure.sub_cause));
    }
    text += "</span></h4>\n<pre>";
    for (std::size_t i = 0; i < failure.lines.size(); ++i) {
        const std::string line = escaped(failure.lines[i]);
        text += i == failure.shown_at && !failure.concluded ? "<mark>" + line + "</mark>\n"
                                                            : line + "\n";
    }
    return text + "</pre>\n";
}

std::string cause_summary(const Run& run, Cause cause) {
    const CauseRow& row = row_of(cause);
    const CauseCount& count = run.causes.at(index_of(cause));
    const int test_case = test_case_of(cause, run.mode);
    std::string text =
        "<summary><b>" + std::string(name_of(row.phase)) + ": " + escaped(row.words) + "</b> ";
    if (count.failures != 0) {
        text += "<span class=\"bad\">" + count_text(count.failures, "time", "times") + "</span>";
    }
    if (count.warnings != 0) {
        text += " <span class=\"amber\">" + count_text(count.warnings, "time", "times") +
                ", the test went on</span>";
    }
    if (count.unrecorded != 0) {
        text += " <span class=\"soft\">" + count_text(count.unrecorded, "time", "times") +
                " at the interrupt</span>";
    }
    text += "<br/><span class=\"soft\">";
    if (test_case != 0) {
        text += "test case " + std::to_string(test_case) + ", code " + std::to_string(row.code) +
                (records_of(cause, run.mode) > 1 ? ", counted twice" : "");
    } else if (count.failures != 0) {
        text += run.mode == Mode::unknown
                    ? "the console does not tell the mode, hence not the test case"
                    : "not counted in the result file";
    } else {
        text += is_weak_pass(cause) ? "counts as passed" : "not counted in the result file";
    }
    if (count.failures + count.warnings > 1) {
        text += "; iterations " + std::to_string(count.first_iteration) + " to " +
                std::to_string(count.last_iteration);
    }
    return text + "</span></summary>\n";
}

// How many more there are, and how many of them are kept to be shown.
std::string more_words(std::size_t all, std::size_t kept) {
    std::string text = std::to_string(all - 1) + " more";
    return all == kept ? text : text + ", " + std::to_string(kept - 1) + " of them shown";
}

// What lies behind a cause, as far as events and children tell, and where to look first.
std::string explanation(const Run& run, Cause cause) {
    std::string text;
    const auto& behind = run.sub_causes.at(index_of(cause));
    for (std::size_t i = 1; i < behind.size(); ++i) {
        if (behind.at(i) != 0) {
            text += paragraph("", "<b>" + escaped(words_of(static_cast<SubCause>(i))) +
                                      "</b>: " + count_text(behind.at(i), "time", "times"));
        }
    }
    for (const std::string_view advice : advice_on(run, cause)) {
        text += paragraph("advice", "Look first at: " + with_code(advice));
    }
    return text;
}

// The first one at once, the others behind one more click.
std::string excerpts(const Run& run, Cause cause, const std::string& prefix,
                     std::set<std::uint32_t>& anchored) {
    const CauseCount& count = run.causes.at(index_of(cause));
    const std::size_t all = count.failures + count.warnings + count.unrecorded;
    std::string text;
    std::size_t shown = 0;
    for (const Failure& failure : run.failures) {
        if (failure.cause != cause) {
            continue;
        }
        const bool first = anchored.insert(failure.iteration).second;
        const std::string id = prefix + "i" + std::to_string(failure.iteration);
        if (shown == 1) {
            text += "<details class=\"more\"><summary>" + more_words(all, count.detailed) +
                    "</summary>\n";
        }
        text += excerpt(failure, first ? " id=\"" + id + "\"" : "");
        ++shown;
    }
    if (all > shown) {
        text += "<p class=\"soft\">The first " + std::to_string(shown) + " of " +
                std::to_string(all) + " are shown.</p>\n";
    }
    return text + (shown > 1 ? "</details>\n" : "");
}

} // namespace

std::string failures_card(const Run& run, const std::string& prefix) {
    std::vector<Cause> causes;
    for (std::size_t i = 0; i < cause_count; ++i) {
        const CauseCount& count = run.causes[i];
        if (count.failures + count.warnings + count.unrecorded != 0) {
            causes.push_back(static_cast<Cause>(i));
        }
    }
    if (causes.empty()) {
        return "";
    }
    std::ranges::stable_sort(causes, std::greater<>(),
                             [&](Cause cause) { return run.causes.at(index_of(cause)).failures; });
    std::set<std::uint32_t> anchored;
    std::string text;
    for (const Cause cause : causes) {
        text += "<details" + std::string(cause == causes.front() ? " open=\"\"" : "") + ">" +
                cause_summary(run, cause) + explanation(run, cause) +
                excerpts(run, cause, prefix, anchored) + "</details>\n";
    }
    return card(prefix + "failures", "Failures by cause", text);
}

} // namespace wivex::report

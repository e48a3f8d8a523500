// SPDX-License-Identifier: Apache-2.0
#include "writers/page_failures.hpp"

#include "common/words.hpp"
#include "model/advice.hpp"
#include "model/weak_passes.hpp"
#include "writers/html_text.hpp"
#include "writers/page.hpp"
#include "writers/run_words.hpp"

#include <algorithm>
#include <set>
#include <vector>

namespace wivex::report {

namespace {

std::string where(const Failure& failure) {
    std::string text = "(console line " + std::to_string(failure.line) + ")";
    if (failure.unrecorded) {
        text += " interrupted before the tool counted it";
    }
    if (failure.concluded) {
        text += " concluded from what did not come: standard error is not in this console";
    }
    if (failure.sub_cause != SubCause::none) {
        text += ": " + escaped(words_of(failure.sub_cause));
    }
    return span("soft", text);
}

// `anchor`: the id that a link leads to; empty: none does.
std::string excerpt(const Failure& failure, const std::string& anchor) {
    const std::string title =
        "Iteration " + std::to_string(failure.iteration) + " " + where(failure);
    std::string lines;
    for (std::size_t i = 0; i < failure.lines.size(); ++i) {
        const std::string line = escaped(failure.lines[i]);
        const bool marked = i == failure.shown_at && !failure.concluded;
        lines += (marked ? element("mark", line) : line) + "\n";
    }
    const Attributes id = anchor.empty() ? Attributes() : Attributes{{"id", anchor}};
    return element("h4", id, title) + "\n" + element("pre", lines) + "\n";
}

std::string counting(const Run& run, Cause cause) {
    const CauseCount& count = run.count(cause);
    const int test_case = test_case_of(cause, run.mode);
    if (test_case != 0) {
        return "test case " + std::to_string(test_case) + ", code " +
               std::to_string(row_of(cause).code) +
               (records_of(cause, run.mode) > 1 ? ", counted twice" : "");
    }
    if (count.failures != 0) {
        return std::string(uncounted_words(run));
    }
    return is_weak_pass(cause) ? "counts as passed" : "not counted in the result file";
}

std::string cause_summary(const Run& run, Cause cause) {
    const CauseCount& count = run.count(cause);
    const auto times = [](std::uint32_t number) { return count_text(number, "time", "times"); };
    std::string text = element("b", escaped(cause_words(cause))) + " ";
    if (count.failures != 0) {
        text += span("bad", times(count.failures));
    }
    if (count.warnings != 0) {
        text += " " + span("amber", times(count.warnings) + ", the test went on");
    }
    if (count.unrecorded != 0) {
        text += " " + span("soft", times(count.unrecorded) + " at the interrupt");
    }
    std::string notes = counting(run, cause);
    if (count.failures + count.warnings > 1) {
        notes += "; iterations " + std::to_string(count.first_iteration) + " to " +
                 std::to_string(count.last_iteration);
    }
    return element("summary", text + "<br/>" + span("soft", notes)) + "\n";
}

// How many more there are, and how many of them are kept to be shown.
std::string more_words(std::size_t all, std::size_t kept) {
    std::string text = std::to_string(all - 1) + " more";
    return all == kept ? text : text + ", " + std::to_string(kept - 1) + " of them shown";
}

// What lies behind a cause, as far as events and children tell, and where to look first.
std::string explanation(const Run& run, Cause cause) {
    std::string text;
    for (const auto& [sub_cause, count] : run.behind(cause)) {
        text += paragraph("", element("b", escaped(words_of(sub_cause))) + ": " +
                                  count_text(count, "time", "times"));
    }
    for (const std::string_view advice : advice_on(run, cause)) {
        text += paragraph("advice", "Look first at: " + with_code(advice));
    }
    return text;
}

// The first one at once, the others behind one more click.
std::string excerpts(const Run& run, Cause cause, const std::string& prefix,
                     std::set<std::uint32_t>& anchored) {
    std::string first;
    std::string others;
    std::size_t shown = 0;
    for (const Failure& failure : run.failures) {
        if (failure.cause != cause) {
            continue;
        }
        const bool is_target = anchored.insert(failure.iteration).second;
        (shown == 0 ? first : others) +=
            excerpt(failure, is_target ? prefix + "i" + std::to_string(failure.iteration) : "");
        ++shown;
    }
    const std::size_t all = run.count(cause).all();
    const std::string rest = all > shown
                                 ? paragraph("soft", "The first " + std::to_string(shown) + " of " +
                                                         std::to_string(all) + " are shown.")
                                 : "";
    if (shown < 2) {
        return first + rest;
    }
    const std::string more = element("summary", more_words(all, run.count(cause).detailed));
    return first + element("details", {{"class", "more"}}, more + "\n" + others + rest) + "\n";
}

} // namespace

std::string failures_card(const Run& run, const std::string& prefix) {
    std::vector<Cause> causes = run.told_causes();
    if (causes.empty()) {
        return "";
    }
    std::ranges::stable_sort(causes, std::greater<>(),
                             [&](Cause cause) { return run.count(cause).failures; });
    std::set<std::uint32_t> anchored;
    std::string text;
    for (const Cause cause : causes) {
        const std::string markup = cause_summary(run, cause) + explanation(run, cause) +
                                   excerpts(run, cause, prefix, anchored);
        const bool first = cause == causes.front();
        text += element("details", first ? Attributes{{"open", ""}} : Attributes(), markup) + "\n";
    }
    return card(prefix + "failures", "Failures by cause", text);
}

} // namespace wivex::report

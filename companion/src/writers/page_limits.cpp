// SPDX-License-Identifier: Apache-2.0
#include "writers/page_limits.hpp"

#include "model/limit_verdict.hpp"
#include "writers/html_text.hpp"
#include "writers/limit_words.hpp"
#include "writers/page.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

std::string_view style_of(LimitVerdict verdict, bool green) {
    switch (verdict) {
    case LimitVerdict::outside:
        return "bad";
    case LimitVerdict::unknown:
        return "amber";
    default:
        return green ? "ok" : "soft";
    }
}

std::string_view mark_of(LimitVerdict verdict) {
    switch (verdict) {
    case LimitVerdict::outside:
        return "\u00d7 ";
    case LimitVerdict::unknown:
        return "? ";
    default:
        return "";
    }
}

// The iterations that break a limit, or why it is not known.
std::string remarks(const Run& run, const LimitResult& result, const std::string& prefix) {
    std::string text;
    for (const std::uint32_t number : result.iterations) {
        text += (text.empty() ? "" : ", ") + iteration_link(run, number, prefix);
    }
    if (result.broken > result.iterations.size()) {
        text += " and " + std::to_string(result.broken - result.iterations.size()) + " more";
    }
    return result.why.empty() ? text : text + escaped(result.why);
}

std::string limit_row(const Run& run, const LimitResult& result, bool green,
                      const std::string& prefix) {
    const std::string verdict =
        std::string(mark_of(result.verdict)) + std::string(name_of(result.verdict));
    const std::string measured = result.value ? escaped(value_words(result)) : "not measured";
    return element("tr", element("th", {{"scope", "row"}}, escaped(text_of(result.limit))) +
                             element("td", measured) +
                             element("td", {{"class", style_of(result.verdict, green)}}, verdict) +
                             element("td", {{"class", "verdicts"}}, remarks(run, result, prefix))) +
           "\n";
}

} // namespace

std::string limits_line(const std::vector<LimitResult>& results, bool green) {
    const std::optional<LimitVerdict> verdict = worst_of(results);
    return verdict ? paragraph("limits " + std::string(style_of(*verdict, green)),
                               std::string(mark_of(*verdict)) + escaped(limits_sentence(results)))
                   : "";
}

std::string limits_card(const Run& run, bool green, const std::string& prefix) {
    const std::vector<LimitResult> results = judge_limits(run);
    if (results.empty()) {
        return "";
    }
    std::string rows;
    for (const LimitResult& result : results) {
        rows += limit_row(run, result, green, prefix);
    }
    const std::string heads = column_head("Limit") + column_head("Measured") +
                              column_head("Verdict") + column_head("Iterations that break it");
    return card(prefix + "limits", "Limits",
                table({{"class", "phases compared"}}, heads, rows) +
                    paragraph("soft", "They were given to the report. The verdict of the tool does "
                                      "not know them, and stands above."));
}

std::string iteration_link(const Run& run, std::uint32_t number, const std::string& prefix) {
    std::string text = std::to_string(number);
    if (std::ranges::find(run.failures, number, &Failure::iteration) != run.failures.end()) {
        return element("a", {{"href", "#" + prefix + "i" + text}}, text);
    }
    if (run.worst.excerpt_of(number) != nullptr) {
        return element("a", {{"href", "#" + prefix + "w" + text}}, text);
    }
    return text;
}

} // namespace wivex::report

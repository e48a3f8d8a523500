// SPDX-License-Identifier: Apache-2.0
#include "writers/compare_page.hpp"

#include "common/words.hpp"
#include "writers/compare_words.hpp"
#include "writers/html_text.hpp"
#include "writers/page.hpp"

namespace wivex::report {

namespace {

std::string_view style_of(Change change) {
    switch (change) {
    case Change::worse:
        return "bad";
    case Change::better:
        return "ok";
    case Change::none:
        return "soft";
    default:
        return "amber";
    }
}

// A comparison is no verdict on a run: what shows no difference does not look like a pass.
std::string_view style_of(const Comparison& comparison) {
    return comparison.is_worse() ? "failed" : comparison.doubts.empty() ? "plain" : "open";
}

std::string named_cell(std::string_view name, const std::string& text) {
    return element("td", {{"class", "number"}, {"data-name", name}}, escaped(text));
}

std::string result_cell(Change change) {
    return element("td", {{"class", "verdicts " + std::string(style_of(change))}},
                   words_of(change));
}

std::string row_head(std::string_view text) {
    return element("th", {{"scope", "row"}}, escaped(text));
}

std::string failures_part(const Comparison& comparison) {
    std::string rows;
    for (const ComparedCount& count : comparison.failures) {
        rows +=
            element("tr", row_head(count.words) + named_cell("before", share_words(count.before)) +
                              named_cell("after", share_words(count.after)) +
                              named_cell("chance", chance_words(count.corrected)) +
                              result_cell(count.change)) +
            "\n";
    }
    const std::string heads = column_head("Failure") + number_head("Before") +
                              number_head("After") + number_head("Chance") +
                              column_head("Difference");
    return card("failures", "Failures by cause",
                table({{"class", "phases compared"}}, heads, rows));
}

std::string figures_part(const Comparison& comparison) {
    std::string rows;
    for (const ComparedFigure& figure : comparison.figures) {
        const std::string unit = " " + std::string(figure.unit);
        const auto end = [&](const Middle& middle) {
            return middle.count == 0 ? "" : exact_text(middle.percentile_95) + unit;
        };
        rows += element("tr", row_head(figure.name) +
                                  named_cell("before", median_words(figure, figure.before)) +
                                  named_cell("after", median_words(figure, figure.after)) +
                                  named_cell("change", change_words(figure)) +
                                  named_cell("95 % before", end(figure.before)) +
                                  named_cell("95 % after", end(figure.after)) +
                                  named_cell("chance",
                                             figure.test ? chance_words(figure.corrected) : "") +
                                  result_cell(figure.change)) +
                "\n";
    }
    const std::string heads = column_head("Figure") + number_head("Median before") +
                              number_head("After") + number_head("Change") +
                              number_head("95 % before") + number_head("After") +
                              number_head("Chance") + column_head("Difference");
    return comparison.figures.empty() ? ""
                                      : card("figures", "Throughput, signal and times",
                                             table({{"class", "phases compared"}}, heads, rows));
}

std::string sides_part(const Comparison& comparison) {
    std::string text = "\n";
    for (const auto& [name, side] :
         {std::pair("Before", &comparison.before), std::pair("After", &comparison.after)}) {
        text += element("dt", name) +
                element("dd", escaped(side_words(*side)) + "<br/>" + escaped(side->verdict_words)) +
                "\n";
    }
    return card("sides", "What is compared", element("dl", {{"class", "facts"}}, text) + "\n");
}

std::string doubts_part(const Comparison& comparison) {
    std::string items = "\n";
    for (const std::string& doubt : comparison.doubts) {
        items += element("li", escaped(doubt)) + "\n";
    }
    return comparison.doubts.empty() ? ""
                                     : card("doubts", "What keeps this from being judged",
                                            element("ul", {{"class", "reasons"}}, items) + "\n");
}

std::string method_part(const Comparison& comparison) {
    return card(
        "method", "How it was tested",
        paragraph("", "Figures: Mann-Whitney's test by ranks, in both directions. Failures: "
                      "Fisher's exact test, or the chi-squared test above 20000 iterations.") +
            paragraph("", "The chance is how often so large a difference comes by itself. It is "
                          "corrected for the number of tests, " +
                              std::to_string(comparison.tests) + ", after Holm; below " +
                              exact_text(significance) + " the difference counts as significant.") +
            paragraph("soft", "No significant difference is no proof that there is none: few "
                              "iterations show only large differences."));
}

} // namespace

std::string write_comparison_page(const Comparison& comparison) {
    const std::string outcome = outcome_of(comparison);
    return html_document("wivex comparison: " + outcome,
                         "\n" + element("h1", "wivex comparison") + "\n" +
                             verdict_heading(style_of(comparison), outcome) +
                             doubts_part(comparison) + sides_part(comparison) +
                             failures_part(comparison) + figures_part(comparison) +
                             method_part(comparison));
}

} // namespace wivex::report

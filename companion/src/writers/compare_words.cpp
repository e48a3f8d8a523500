// SPDX-License-Identifier: Apache-2.0
#include "writers/compare_words.hpp"

#include "common/words.hpp"

namespace wivex::report {

std::string_view words_of(Change change) {
    switch (change) {
    case Change::better:
        return "significantly better";
    case Change::worse:
        return "significantly worse";
    case Change::too_few:
        return "too few values to tell";
    case Change::lost:
        return "not measured any more";
    default:
        return "no significant difference";
    }
}

std::string median_words(const ComparedFigure& figure, const Middle& middle) {
    return middle.count == 0 ? "none" : exact_text(middle.median) + " " + std::string(figure.unit);
}

std::string share_words(const Share& share) {
    return std::to_string(share.hits) + " of " + std::to_string(share.all) + " (" +
           figure_text(share.part() * 100) + " %)";
}

std::string change_words(const ComparedFigure& figure) {
    if (figure.before.count == 0 || figure.after.count == 0) {
        return "";
    }
    const double change = rounded(figure.after.median - figure.before.median);
    const std::string sign = change > 0 ? "+" : "";
    std::string text = sign + exact_text(change) + " " + std::string(figure.unit);
    // A share of decibels means nothing.
    if (figure.before.median > 0) {
        text += " (" + sign + figure_text(change / figure.before.median * 100) + " %)";
    }
    return text;
}

std::string chance_words(double probability) {
    constexpr double least_told = 0.001;
    return probability < least_told ? "< 0.001" : exact_text(probability);
}

std::string side_words(const Reported& reported) {
    std::string text = reported.name + ": " + reported.mode + ", " +
                       count_text(reported.runs, "run", "runs") + ", " +
                       iterations_text(reported.iterations) + ", verdict " + reported.verdict;
    if (!reported.serial.empty()) {
        text += ", serial " + reported.serial;
    }
    if (!reported.station.empty()) {
        text += ", station " + reported.station;
    }
    if (reported.runs_left_out != 0) {
        text += "; " + count_text(reported.runs_left_out, "earlier run", "earlier runs") +
                " not in the file";
    }
    if (reported.iterations_kept < reported.iterations) {
        text += "; figures of the first " + iterations_text(reported.iterations_kept);
    }
    return text;
}

std::string comparison_summary(const Comparison& comparison) {
    std::string text = outcome_of(comparison) + "\n";
    text += "  before: " + side_words(comparison.before) + "\n";
    text += "  after:  " + side_words(comparison.after) + "\n";
    for (const std::string& doubt : comparison.doubts) {
        text += "  cannot be judged: " + doubt + "\n";
    }
    for (const ComparedCount& count : comparison.failures) {
        text += "  " + count.words + ": " + share_words(count.before) + " -> " +
                share_words(count.after) + ", " + std::string(words_of(count.change)) +
                ", chance " + chance_words(count.corrected) + "\n";
    }
    for (const ComparedFigure& figure : comparison.figures) {
        const std::string change = change_words(figure);
        text += "  " + std::string(figure.name) +
                ", median: " + median_words(figure, figure.before) + " -> " +
                median_words(figure, figure.after) + (change.empty() ? "" : ", " + change) + ", " +
                std::string(words_of(figure.change)) +
                (figure.test ? ", chance " + chance_words(figure.corrected) : "") + "\n";
    }
    return text;
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "writers/page_figures.hpp"

#include "common/words.hpp"
#include "writers/chart_axis.hpp"
#include "writers/charts.hpp"
#include "writers/page.hpp"
#include "writers/page_distributions.hpp"

#include <cmath>

namespace wivex::report {

namespace {

// A phase that never takes longer has no curve worth a picture.
constexpr float shortest_drawn = 0.05F;

std::string verdict_counts(const Run& run, Phase phase) {
    const auto& counts = run.verdicts.at(index_of(phase));
    const auto count = [&](Verdict verdict) {
        return counts.at(static_cast<std::size_t>(verdict));
    };
    std::string text;
    const auto add = [&](Verdict verdict, std::string_view style, std::string_view words) {
        if (count(verdict) != 0) {
            text += (text.empty() ? "" : ", ") +
                    span(style, std::to_string(count(verdict)) + " " + std::string(words));
        }
    };
    add(Verdict::failed, "bad", "failed");
    add(Verdict::warned, "amber", "warned");
    add(Verdict::unfinished, "soft", "unfinished");
    add(Verdict::passed, "ok", "passed");
    return text;
}

std::string signed_percent(double share) {
    return (share > 0 ? "+" : "") + figure_text(share * 100) + " %";
}

std::string rank_words(const Trend& trend) {
    return "rank test: z = " + figure_text(trend.z);
}

// Less than this is no change that anybody could feel.
constexpr double least_change_of_time = 0.1;

bool drifts(const Trend& trend, double least_change) {
    return trend.is_drift() && std::fabs(trend.change) >= least_change;
}

std::string trend_words(const Trend& trend, std::string_view unit) {
    if (!trend.known) {
        return "";
    }
    if (!trend.is_significant()) {
        return paragraph("soft", "No trend over the run (" + rank_words(trend) + ").");
    }
    const std::string change = (trend.change > 0 ? "+" : "") + figure_text(trend.change) + " " +
                               std::string(unit) + " (" + signed_percent(trend.share) +
                               ") from the first to the last iteration, " + rank_words(trend);
    if (!trend.is_drift()) {
        return paragraph("soft", "A trend too small to matter: " + change + ".");
    }
    return paragraph("amber", (trend.change > 0 ? "Drifts up: " : "Drifts down: ") + change + ".");
}

std::string number_cell(std::string_view label, const std::string& value) {
    return element("td", {{"class", "number"}, {"data-name", label}}, value);
}

Limit limit_of(Phase phase) {
    Limit limit;
    limit.figure = Figure::phase;
    limit.phase = phase;
    return limit;
}

std::string phase_cells(const Run& run, Phase phase) {
    const Series& series = run.phase_series.at(index_of(phase));
    if (series.empty()) {
        return element("td", {{"class", "wide"}}, "") + number_cell("least", "") +
               number_cell("median", "") + number_cell("95 %", "") + number_cell("99 %", "") +
               number_cell("most", "");
    }
    const Sample& most = series.most();
    const std::string drawn =
        most.value < shortest_drawn
            ? ""
            : curve(seconds_points(run, phase), run.started,
                    {name_of(phase), "s", limits_on(run, limit_of(phase))}, true);
    return element("td", {{"class", "wide"}}, drawn) +
           number_cell("least", duration_text(series.least().value)) +
           number_cell("median", duration_text(series.median())) +
           number_cell("95 %", duration_text(series.quantile(0.95))) +
           number_cell("99 %", duration_text(series.quantile(0.99))) +
           number_cell("most", duration_text(most.value) + " " +
                                   element("small", "in " + std::to_string(most.iteration)));
}

std::string phase_row(const Run& run, Phase phase) {
    const std::string cells = element("th", {{"scope", "row"}}, name_of(phase)) +
                              element("td", {{"class", "verdicts"}}, verdict_counts(run, phase));
    return element("tr", run.times == TimeSource::none ? cells : cells + phase_cells(run, phase)) +
           "\n";
}

std::string drifting_phases(const Run& run) {
    std::string text;
    for (const Phase phase : all_phases()) {
        const Trend trend = run.phase_series.at(index_of(phase)).trend();
        if (drifts(trend, least_change_of_time)) {
            text += paragraph(
                "amber", std::string(name_of(phase)) +
                             (trend.change > 0 ? " gets slower: " : " gets faster: ") +
                             duration_text(std::fabs(trend.change)) + " (" +
                             signed_percent(trend.share) +
                             ") from the first to the last iteration, " + rank_words(trend) + ".");
        }
    }
    return text;
}

} // namespace

std::string phases_card(const Run& run, const std::string& prefix) {
    const bool timed = run.times != TimeSource::none;
    std::string heads = column_head("Phase") + column_head("Verdicts");
    if (timed) {
        heads += column_head("Time over the iterations") + number_head("Least") +
                 number_head("Median") + number_head("95 %") + number_head("99 %") +
                 number_head("Most");
    }
    std::string rows;
    for (const Phase phase : all_phases()) {
        if (!verdict_counts(run, phase).empty()) {
            rows += phase_row(run, phase);
        }
    }
    std::string text = table({{"class", "phases"}}, heads, rows) + drifting_phases(run);
    text += timed
                ? paragraph("soft",
                            "95 and 99 % of the times are not above the figures of those columns. "
                            "Behind the longest time stands its iteration.")
                : paragraph("soft", "Times are unknown: this console was read after the run and "
                                    "carries no time stamps.");
    return card(prefix + "phases", "Phases", text);
}

std::string throughput_card(const Run& run, const std::string& prefix) {
    const Series& series = run.throughput_series;
    if (series.empty()) {
        return "";
    }
    std::string text = curve(throughput_points(run), run.started,
                             {"Throughput", "Mbit/s", limits_on(run, {})}, false);
    text += paragraph("", "Least " + figure_text(series.least().value) + " (iteration " +
                              std::to_string(series.least().iteration) + "), median " +
                              figure_text(series.median()) + ", 95th percentile " +
                              figure_text(series.quantile(0.95)) + ", 99th percentile " +
                              figure_text(series.quantile(0.99)) + ", most " +
                              figure_text(series.most().value) + " Mbit/s in " +
                              iterations_text(run.throughput.count) + ".");
    text += trend_words(series.trend(), "Mbit/s");
    text += throughput_distribution(run, prefix);
    return card(prefix + "throughput", "Throughput, Mbit/s", text);
}

} // namespace wivex::report

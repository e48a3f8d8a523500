// SPDX-License-Identifier: Apache-2.0
#include "writers/page_distributions.hpp"

#include "common/printable.hpp"
#include "common/words.hpp"
#include "writers/chart_axis.hpp"
#include "writers/charts.hpp"
#include "writers/histogram_chart.hpp"
#include "writers/html_text.hpp"
#include "writers/page.hpp"
#include "writers/page_limits.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

// A phase that never takes longer is not worth a histogram.
constexpr float shortest_shown = 0.05F;

/// A figure as the page shows it.
struct Shown {
    std::string_view what;
    std::string_view unit;
    const Series& series;
    const WorstList& worst;
    Limit limits_of;
};

std::string worst_words(const Run& run, const Shown& shown, const std::string& prefix) {
    std::string text;
    for (const Sample& sample : shown.worst.samples()) {
        text += (text.empty() ? "" : ", ") + exact_text(sample.value) + " in " +
                iteration_link(run, sample.iteration, prefix);
    }
    return text.empty() ? "" : paragraph("", "Worst iterations: " + text + ".");
}

std::string percentile_words(const Shown& shown) {
    const Series& series = shown.series;
    const std::string about = series.keeps_all() ? "" : "about ";
    return paragraph(
        "", "Median " + about + exact_text(series.median()) + ", 95th percentile " + about +
                exact_text(series.quantile(part_of(Statistic::percentile_95))) +
                ", 99th percentile " + about +
                exact_text(series.quantile(part_of(Statistic::percentile_99))) + ", most " +
                exact_text(series.most().value) + " " + std::string(shown.unit) + ".");
}

std::string distribution(const Run& run, const Shown& shown, const std::string& prefix) {
    return histogram(shown.series, {shown.what, shown.unit, limits_on(run, shown.limits_of)}) +
           worst_words(run, shown, prefix);
}

std::string folded(const Run& run, const Shown& shown, const std::string& prefix) {
    if (shown.series.empty() || shown.series.most().value < shortest_shown) {
        return "";
    }
    return element("details",
                   element("summary",
                           element("b", shown.what) + " " +
                               span("soft", "median " + duration_text(shown.series.median()))) +
                       "\n" + percentile_words(shown) + distribution(run, shown, prefix)) +
           "\n";
}

std::string excerpt_part(const Excerpt& excerpt, const std::string& prefix) {
    std::string lines;
    std::size_t shown = 0;
    for (std::string_view rest = excerpt.text; !rest.empty(); ++shown) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(line.size() + 1);
        lines += escaped(printable(line)) + "\n";
    }
    const std::uint64_t count = excerpt.last_line - excerpt.first_line + 1;
    const std::string number = std::to_string(excerpt.iteration);
    const std::string where = "console lines " + std::to_string(excerpt.first_line) + " to " +
                              std::to_string(excerpt.last_line);
    const std::string part =
        count > shown ? paragraph("soft", "The last " + std::to_string(shown) + " of them:") : "";
    return element(
               "details", {{"id", prefix + "w" + number}},
               element("summary", element("b", "Iteration " + number) + " " + span("soft", where)) +
                   "\n" + part + element("pre", lines)) +
           "\n";
}

} // namespace

std::string throughput_distribution(const Run& run, const std::string& prefix) {
    return distribution(
        run, {"Throughput", "Mbit/s", run.throughput_series, run.worst.throughput, {}}, prefix);
}

std::string signal_card(const Run& run, const std::string& prefix) {
    if (run.signal_series.empty()) {
        return "";
    }
    Limit limit;
    limit.figure = Figure::signal;
    const Shown shown{"Signal", "dBm", run.signal_series, run.worst.signal, limit};
    const CurveLabels labels{shown.what, shown.unit, limits_on(run, limit)};
    return card(prefix + "signal", "Signal of the access point under test, dBm",
                curve(signal_points(run), run.started, labels, false) + percentile_words(shown) +
                    distribution(run, shown, prefix));
}

std::string times_card(const Run& run, const std::string& prefix) {
    if (run.times == TimeSource::none) {
        return "";
    }
    Limit limit;
    limit.figure = Figure::iteration;
    std::string text =
        folded(run, {"iteration", "s", run.iteration_series, run.worst.iteration, limit}, prefix);
    limit.figure = Figure::phase;
    for (const Phase phase : all_phases()) {
        limit.phase = phase;
        text += folded(run,
                       {name_of(phase), "s", run.phase_series.at(index_of(phase)),
                        run.worst.phases.at(index_of(phase)), limit},
                       prefix);
    }
    return text.empty() ? "" : card(prefix + "times", "How long it took, and how often", text);
}

std::string worst_card(const Run& run, const std::string& prefix) {
    std::vector<const Excerpt*> excerpts;
    for (const Excerpt& excerpt : run.worst.excerpts) {
        excerpts.push_back(&excerpt);
    }
    if (excerpts.empty()) {
        return "";
    }
    std::ranges::sort(excerpts, {}, &Excerpt::iteration);
    std::string text;
    for (const Excerpt* excerpt : excerpts) {
        text += excerpt_part(*excerpt, prefix);
    }
    return card(prefix + "worst", "Console of the worst iterations", text);
}

} // namespace wivex::report

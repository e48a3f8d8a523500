#include "writers/page_figures.hpp"

#include "charts.hpp"
#include "html_text.hpp"
#include "writers/page.hpp"

#include <cmath>
#include <span>

namespace wivex::report {

namespace {

constexpr double noteworthy_drift = 10;
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
            text += (text.empty() ? "" : ", ");
            text += "<span class=\"" + std::string(style) + "\">" + std::to_string(count(verdict)) +
                    " " + std::string(words) + "</span>";
        }
    };
    add(Verdict::failed, "bad", "failed");
    add(Verdict::warned, "amber", "warned");
    add(Verdict::unfinished, "soft", "unfinished");
    add(Verdict::passed, "ok", "passed");
    return text;
}

std::string drift_words(std::span<const CurvePoint> points, std::string_view unit) {
    const Drift drift = drift_of(points);
    if (!drift.known) {
        return "";
    }
    const bool drifts = std::fabs(drift.percent()) >= noteworthy_drift;
    std::string text = drifts ? "<p class=\"amber\">Drifts" : "<p class=\"soft\">Steady";
    text += ": mean of the first third " + figure_text(drift.early) + ", of the last third " +
            figure_text(drift.late) + " " + std::string(unit) + " (" +
            (drift.percent() > 0 ? "+" : "") + figure_text(drift.percent()) + " %).</p>\n";
    return text;
}

std::string phase_row(const Run& run, Phase phase) {
    const std::vector<CurvePoint> points = seconds_points(run, phase);
    const Spread& seconds = run.phase_seconds.at(index_of(phase));
    const std::string name(name_of(phase));
    std::string text = "<tr><th scope=\"row\">" + name + "</th><td class=\"verdicts\">" +
                       verdict_counts(run, phase) + "</td>";
    if (run.times == TimeSource::none) {
        return text + "</tr>\n";
    }
    text += "<td class=\"wide\">" +
            (seconds.most < shortest_drawn ? "" : curve(points, run.started, {name, "s"}, true)) +
            "</td>";
    const auto value = [&](std::string_view label, double number) {
        text += R"(<td class="number" data-name=")" + std::string(label) + R"(">)" +
                (seconds.count == 0 ? "" : duration_text(number)) + "</td>";
    };
    value("least", seconds.least);
    value("mean", seconds.mean());
    value("most", seconds.most);
    return text + "</tr>\n";
}

std::string drifting_phases(const Run& run) {
    std::string text;
    for (const Phase phase : all_phases()) {
        const std::vector<CurvePoint> points = seconds_points(run, phase);
        const Drift drift = drift_of(points);
        if (drift.known && drift.late > 0.5 && std::fabs(drift.percent()) >= noteworthy_drift) {
            text += "<p class=\"amber\">" + std::string(name_of(phase)) +
                    " drifts: mean of the first third " + duration_text(drift.early) +
                    ", of the last third " + duration_text(drift.late) + ".</p>\n";
        }
    }
    return text;
}

} // namespace

std::string phases_card(const Run& run, const std::string& prefix) {
    const bool timed = run.times != TimeSource::none;
    std::string text = "<table class=\"phases\"><thead><tr><th>Phase</th><th>Verdicts</th>";
    if (timed) {
        text += "<th>Time over the iterations</th><th class=\"number\">Least</th>"
                "<th class=\"number\">Mean</th><th class=\"number\">Most</th>";
    }
    text += "</tr></thead><tbody>\n";
    for (const Phase phase : all_phases()) {
        if (!verdict_counts(run, phase).empty()) {
            text += phase_row(run, phase);
        }
    }
    text += "</tbody></table>\n" + drifting_phases(run);
    if (!timed) {
        text += "<p class=\"soft\">Times are unknown: this console was read after the run and "
                "carries no time stamps.</p>\n";
    }
    return card(prefix + "phases", "Phases", text);
}

std::string throughput_card(const Run& run, const std::string& prefix) {
    const std::vector<CurvePoint> points = throughput_points(run);
    if (points.empty()) {
        return "";
    }
    const Spread& all = run.throughput;
    std::string text = curve(points, run.started, {"Throughput", "Mbit/s"}, false);
    text += "<p>Least " + figure_text(all.least) + ", mean " + figure_text(all.mean()) + ", most " +
            figure_text(all.most) + " Mbit/s in " + plural_iterations(all.count) + ".</p>\n";
    text += drift_words(points, "Mbit/s");
    return card(prefix + "throughput", "Throughput, Mbit/s", text);
}

} // namespace wivex::report

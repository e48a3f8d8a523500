// SPDX-License-Identifier: Apache-2.0
#include "writers/charts.hpp"

#include "common/words.hpp"
#include "writers/chart_axis.hpp"
#include "writers/page.hpp"

#include <algorithm>
#include <array>

namespace wivex::report {

namespace {

// Below this many slices a cell is large enough to carry its number.
constexpr std::size_t most_numbered_cells = 60;

std::string iterations_of(const Slice& slice) {
    if (slice.iterations == 1) {
        return "iteration " + std::to_string(slice.first);
    }
    return "iterations " + std::to_string(slice.first) + " to " +
           std::to_string(slice.first + slice.iterations - 1);
}

std::string_view class_of(const Slice& slice) {
    if (slice.count(Outcome::failed) != 0) {
        return "failed";
    }
    if (slice.count(Outcome::uncounted) != 0) {
        return "uncounted";
    }
    if (slice.count(Outcome::unfinished) != 0) {
        return "unfinished";
    }
    return slice.warned != 0 ? "warned" : "passed";
}

std::string words_of(const Slice& slice) {
    const std::string_view kind = class_of(slice);
    if (slice.iterations == 1) {
        return kind == "uncounted" ? "failed, not counted by the tool"
               : kind == "warned"  ? "passed with a warning"
                                   : std::string(kind);
    }
    std::string words = std::to_string(slice.count(Outcome::passed)) + " passed";
    const std::array<std::pair<Outcome, std::string_view>, 3> others{
        {{Outcome::failed, " failed"},
         {Outcome::uncounted, " failed uncounted"},
         {Outcome::unfinished, " unfinished"}}};
    for (const auto& [outcome, text] : others) {
        if (slice.count(outcome) != 0) {
            words += ", " + std::to_string(slice.count(outcome)) + std::string(text);
        }
    }
    return words;
}

std::string_view mark_of(std::string_view kind) {
    if (kind == "failed") {
        return "\u00d7";
    }
    if (kind == "uncounted") {
        return "\u2212";
    }
    if (kind == "unfinished") {
        return "?";
    }
    return kind == "warned" ? "!" : "";
}

// First failure that the page describes in the iterations of a slice.
const Failure* described_failure(const Run& run, const Slice& slice) {
    const auto found = std::ranges::find_if(run.failures, [&](const Failure& failure) {
        return failure.iteration >= slice.first &&
               failure.iteration < slice.first + slice.iterations;
    });
    return found == run.failures.end() ? nullptr : &*found;
}

std::string cell(const Run& run, const Slice& slice, bool numbered, std::string_view prefix) {
    const std::string_view kind = class_of(slice);
    const std::string words = iterations_of(slice) + ": " + words_of(slice);
    std::string inner(mark_of(kind));
    if (numbered) {
        inner = element("b", std::to_string(slice.first)) + inner;
    }
    Attributes attributes{{"class", "cell " + std::string(kind)}, {"title", words}};
    if (slice.iterations > 1 && slice.count(Outcome::failed) != 0) {
        const std::uint32_t bad = slice.count(Outcome::failed) + slice.count(Outcome::uncounted);
        const double share = static_cast<double>(bad) / slice.iterations;
        // A small share stays visible.
        attributes.emplace_back("style", "--share:max(2px," + coordinate(share * 100) + "%)");
    }
    inner += span("sr", words);
    const Failure* const failure = described_failure(run, slice);
    if (failure == nullptr) {
        return element("li", attributes, inner);
    }
    const std::string target = "#" + std::string(prefix) + "i" + std::to_string(failure->iteration);
    return element("li", attributes, element("a", {{"href", target}}, inner));
}

Axis axis_of(std::span<const CurvePoint> points, const std::vector<Limit>& limits) {
    double least = 0;
    double most = 0;
    const auto take = [&](double value) {
        least = std::min(least, value);
        most = std::max(most, value);
    };
    for (const CurvePoint& point : points) {
        take(point.value.least);
        take(point.value.most);
    }
    for (const Limit& limit : limits) {
        take(limit.value);
    }
    return {least, most};
}

class CurveWriter {
public:
    CurveWriter(std::span<const CurvePoint> points, std::uint32_t iterations, const Axis& axis)
        : points_(points), last_(iterations > 1 ? iterations - 1 : 1), axis_(axis) {}

    std::string range() const {
        std::string upper;
        std::string lower;
        bool spread = false;
        for (const CurvePoint& point : points_) {
            spread = spread || point.value.most > point.value.least;
            upper += at(point, point.value.most) + " ";
            lower.insert(0, at(point, point.value.least) + " ");
        }
        return spread ? R"(<polygon class="range" points=")" + upper + lower + R"("/>)" : "";
    }

    std::string line() const {
        if (points_.size() == 1) {
            return "";
        }
        std::string text;
        for (const CurvePoint& point : points_) {
            text += at(point, point.value.mean()) + " ";
        }
        return R"(<polyline class="line" points=")" + text + R"("/>)";
    }

    // A stroke of no length with round ends is a dot that no scaling can squash.
    std::string dots(const CurveLabels& labels) const {
        if (points_.size() > 120) {
            return "";
        }
        std::string text;
        for (const CurvePoint& point : points_) {
            const std::string title = element("title", "iteration " + std::to_string(point.first) +
                                                           ": " + figure_text(point.value.mean()) +
                                                           " " + std::string(labels.unit));
            text += element("path",
                            {{"class", "dot"}, {"d", "M" + at(point, point.value.mean()) + "h0"}},
                            title);
        }
        return text;
    }

private:
    std::string at(const CurvePoint& point, double value) const {
        const double x = 1000.0 * point.first / last_;
        return coordinate(x) + "," + coordinate(100 - axis_.share_of(value) * 100);
    }

    std::span<const CurvePoint> points_;
    double last_;
    const Axis& axis_;
};

Spread all_of(std::span<const CurvePoint> points) {
    Spread all;
    for (const CurvePoint& point : points) {
        all.add(point.value);
    }
    return all;
}

} // namespace

std::string iteration_strip(const Run& run, std::string_view prefix) {
    const auto& slices = run.timeline.slices();
    const bool numbered = slices.size() <= most_numbered_cells && run.timeline.width() == 1;
    std::string cells;
    for (const Slice& slice : slices) {
        cells += cell(run, slice, numbered, prefix);
    }
    return element("ol", {{"class", numbered ? "strip numbered" : "strip"}}, cells) + "\n";
}

std::string curve(std::span<const CurvePoint> points, std::uint32_t iterations,
                  const CurveLabels& labels, bool small) {
    if (points.empty()) {
        return "";
    }
    const Axis axis = axis_of(points, labels.limits);
    const CurveWriter writer(points, iterations, axis);
    const Spread all = all_of(points);
    const std::string unit(labels.unit);
    const std::string words = std::string(labels.what) + " over the iterations: least " +
                              figure_text(all.least) + ", mean " + figure_text(all.mean()) +
                              ", most " + figure_text(all.most) + " " + unit +
                              limits_alternative(labels.limits);
    const std::string svg =
        element("svg",
                {{"role", "img"},
                 {"aria-label", words},
                 {"viewBox", "0 0 1000 100"},
                 {"preserveAspectRatio", "none"}},
                R"(<path class="grid" d="M0 0H1000M0 50H1000M0 100H1000"/>)" + writer.range() +
                    writer.line() + writer.dots(labels) + limit_lines(labels.limits, axis));
    if (small) {
        return element("div", {{"class", "spark"}},
                       svg + span("top", figure_text(axis.top()) + " " + unit));
    }
    const std::string last = std::to_string(iterations > 0 ? iterations - 1 : 0);
    const std::string y = element("span", figure_text(axis.top())) +
                          element("span", figure_text((axis.top() + axis.bottom()) / 2)) +
                          element("span", figure_text(axis.bottom()));
    const std::string x =
        element("span", "0") + element("span", "iteration") + element("span", last);
    return element("div", {{"class", "plot"}},
                   element("div", {{"class", "y"}}, y) + svg + element("div", {{"class", "x"}}, x));
}

std::vector<CurvePoint> throughput_points(const Run& run) {
    std::vector<CurvePoint> points;
    for (const Slice& slice : run.timeline.slices()) {
        if (slice.throughput.count != 0) {
            points.push_back({slice.first, slice.throughput});
        }
    }
    return points;
}

std::vector<CurvePoint> signal_points(const Run& run) {
    std::vector<CurvePoint> points;
    for (const Slice& slice : run.timeline.slices()) {
        if (slice.signal.count != 0) {
            points.push_back({slice.first, slice.signal});
        }
    }
    return points;
}

std::vector<CurvePoint> seconds_points(const Run& run, Phase phase) {
    std::vector<CurvePoint> points;
    for (const Slice& slice : run.timeline.slices()) {
        const Spread& seconds = slice.seconds.at(index_of(phase));
        if (seconds.count != 0) {
            points.push_back({slice.first, seconds});
        }
    }
    return points;
}

} // namespace wivex::report

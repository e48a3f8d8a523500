// SPDX-License-Identifier: Apache-2.0
#include "writers/histogram_chart.hpp"

#include "common/words.hpp"
#include "model/histogram.hpp"
#include "writers/chart_axis.hpp"
#include "writers/page.hpp"

#include <algorithm>

namespace wivex::report {

namespace {

std::string range_of(const Bin& bin) {
    return exact_text(bin.from) + " to " + exact_text(bin.to);
}

// In a chart of 1000 by 100.
std::string bars(const std::vector<Bin>& bins, std::uint32_t largest, std::string_view unit) {
    std::string text;
    const double width = 1000.0 / static_cast<double>(bins.size());
    for (std::size_t i = 0; i < bins.size(); ++i) {
        if (bins[i].count == 0) {
            continue;
        }
        // One value stays visible beside thousands.
        const double height = std::max(1.0, 100.0 * bins[i].count / largest);
        const double left = width * static_cast<double>(i);
        text += element("rect",
                        {{"class", "bar"},
                         {"x", coordinate(left + 0.05 * width)},
                         {"y", coordinate(100 - height)},
                         {"width", coordinate(0.9 * width)},
                         {"height", coordinate(height)}},
                        element("title", range_of(bins[i]) + " " + std::string(unit) + ": " +
                                             iterations_text(bins[i].count)));
    }
    return text;
}

// Only those that lie between the ends of the bars can be drawn there.
std::string limits_between(const std::vector<Bin>& bins, const std::vector<Limit>& limits) {
    const double from = bins.front().from;
    const double range = bins.back().to - from;
    std::string text;
    for (const Limit& limit : limits) {
        const double share = range <= 0 ? -1 : (limit.value - from) / range;
        if (share >= 0 && share <= 1) {
            text += limit_line(limit, "M" + coordinate(share * 1000) + " 0V100");
        }
    }
    return text;
}

std::string table_of(const std::vector<Bin>& bins, const HistogramLabels& labels) {
    std::string rows;
    for (const Bin& bin : bins) {
        rows += element("tr", element("th", {{"scope", "row"}}, range_of(bin)) +
                                  element("td", {{"class", "number"}}, std::to_string(bin.count))) +
                "\n";
    }
    const std::string heads =
        column_head(std::string(labels.what) + ", " + std::string(labels.unit)) +
        number_head("Iterations");
    return element("details", {{"class", "more"}},
                   element("summary", "Table of these numbers") + "\n" + table({}, heads, rows)) +
           "\n";
}

} // namespace

std::string histogram(const Series& series, const HistogramLabels& labels) {
    const std::vector<Bin> bins = histogram_of(series);
    if (bins.empty()) {
        return "";
    }
    const Bin& largest = *std::ranges::max_element(bins, {}, &Bin::count);
    const std::string unit(labels.unit);
    const std::string words = std::string(labels.what) + ", how often which values: from " +
                              exact_text(bins.front().from) + " to " + exact_text(bins.back().to) +
                              " " + unit + ", most often " + range_of(largest) + " (" +
                              iterations_text(largest.count) + ")" +
                              limits_alternative(labels.limits);
    const std::string svg =
        element("svg",
                {{"role", "img"},
                 {"aria-label", words},
                 {"viewBox", "0 0 1000 100"},
                 {"preserveAspectRatio", "none"}},
                R"(<path class="grid" d="M0 100H1000"/>)" + bars(bins, largest.count, labels.unit) +
                    limits_between(bins, labels.limits));
    const std::string y =
        element("span", std::to_string(largest.count)) + element("span", "") + element("span", "0");
    const std::string x = element("span", exact_text(bins.front().from)) + element("span", unit) +
                          element("span", exact_text(bins.back().to));
    const std::string note =
        series.keeps_all()
            ? ""
            : paragraph("soft", "From " + std::to_string(series.kept().size()) + " of " +
                                    std::to_string(series.count()) + " values, evenly taken.");
    return element("div", {{"class", "plot histogram"}},
                   element("div", {{"class", "y"}}, y) + svg +
                       element("div", {{"class", "x"}}, x)) +
           "\n" + note + table_of(bins, labels);
}

} // namespace wivex::report

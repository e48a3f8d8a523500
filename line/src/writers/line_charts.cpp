// SPDX-License-Identifier: Apache-2.0
#include "writers/line_charts.hpp"

#include "writers/chart_axis.hpp"
#include "writers/site_page.hpp"

#include <algorithm>

namespace wivex::line {

using report::coordinate;
using report::element;

namespace {

constexpr std::size_t most_bars = 12;

std::string at(double x, double y) {
    return coordinate(x) + "," + coordinate(y);
}

std::string plot(const std::string& words, const std::string& top, const std::string& bottom,
                 const std::string& shapes, const std::string& left, const std::string& right) {
    const std::string svg = report::picture(
        words, R"(<path class="grid" d="M0 0H1000M0 50H1000M0 100H1000"/>)" + shapes);
    return element(
               "div", {{"class", "plot"}},
               element("div", {{"class", "y"}}, element("span", top) + element("span", bottom)) +
                   svg +
                   element("div", {{"class", "x"}},
                           element("span", left) + element("span", right))) +
           "\n";
}

// Maps a rate to the height of the picture, whose bottom is not 0: yields are close to 1.
class Scale {
public:
    explicit Scale(double least) : bottom_(std::max(0.0, least)) {}
    double y(double rate) const {
        return 100 - (rate - bottom_) / (1 - bottom_) * 100;
    }
    double bottom() const {
        return bottom_;
    }

private:
    double bottom_;
};

double lowest(const Factory& factory, double rate) {
    double least = rate;
    for (const auto& [begin, day] : factory.days()) {
        if (day.first.all != 0) {
            least = std::min({least, day.first.rate(), chart_limits(rate, day.first.all).low});
        }
    }
    return std::min(0.95, least - 0.02);
}

} // namespace

Share all_days(const Factory& factory) {
    Share all;
    for (const auto& [begin, day] : factory.days()) {
        all.good += day.first.good;
        all.all += day.first.all;
    }
    return all;
}

bool is_outside(const Share& day, double rate) {
    const Interval limits = chart_limits(rate, day.all);
    return day.all != 0 && (day.rate() < limits.low || day.rate() > limits.high);
}

std::string yield_chart(const Factory& factory) {
    const Share all = all_days(factory);
    if (all.all == 0) {
        return "";
    }
    const Scale scale(lowest(factory, all.rate()));
    std::string line;
    std::string dots;
    std::string low;
    std::string high;
    double x = 0;
    const double step = 1000.0 / static_cast<double>(factory.days().size() - 1);
    for (const auto& [begin, day] : factory.days()) {
        if (day.first.all != 0) {
            const Interval limits = chart_limits(all.rate(), day.first.all);
            const std::string point = at(x, scale.y(day.first.rate()));
            line += point + " ";
            low += at(x, scale.y(limits.low)) + " ";
            high += at(x, scale.y(limits.high)) + " ";
            const std::string title = day_text(begin) + ": " + percent(day.first.rate()) +
                                      " % of " + std::to_string(day.first.all);
            dots += element("path",
                            {{"class", is_outside(day.first, all.rate()) ? "outside" : "dot"},
                             {"d", "M" + point + "h0"}},
                            element("title", title));
        }
        x += step;
    }
    const std::string shapes = R"(<polyline class="limit" points=")" + low + R"("/>)" +
                               R"(<polyline class="limit" points=")" + high + R"("/>)" +
                               R"(<polyline class="line" points=")" + line + R"("/>)" + dots;
    return plot("First-pass yield of each day with its limits; the table below has the numbers",
                "100 %", percent(scale.bottom()) + " %", shapes,
                day_text(factory.days().begin()->first), day_text(factory.now()));
}

std::string pareto_chart(const Factory& factory) {
    const auto& causes = factory.pareto();
    std::int64_t all = 0;
    for (const auto& [cause, count] : causes) {
        all += count;
    }
    if (all == 0) {
        return "";
    }
    const std::size_t bars = std::min(causes.size(), most_bars);
    const double width = 1000.0 / static_cast<double>(bars);
    std::string shapes;
    std::string line;
    std::int64_t sum = 0;
    for (std::size_t i = 0; i < bars; ++i) {
        const auto& [cause, count] = causes[i];
        sum += count;
        const double height = 100.0 * static_cast<double>(count) / static_cast<double>(all);
        const double left = width * static_cast<double>(i);
        shapes += element("rect",
                          {{"class", "bar"},
                           {"x", coordinate(left + width * 0.1)},
                           {"y", coordinate(100 - height)},
                           {"width", coordinate(width * 0.8)},
                           {"height", coordinate(height)}},
                          element("title", cause + ": " + std::to_string(count)));
        line += at(left + width / 2,
                   100 - 100.0 * static_cast<double>(sum) / static_cast<double>(all)) +
                " ";
    }
    shapes += R"(<polyline class="line" points=")" + line + R"("/>)";
    return plot("Causes of failed first attempts and their sum; the table below has the numbers",
                "100 %", "0", shapes, causes.front().first, bars > 1 ? causes[bars - 1].first : "");
}

} // namespace wivex::line

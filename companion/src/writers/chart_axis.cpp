// SPDX-License-Identifier: Apache-2.0
#include "writers/chart_axis.hpp"

#include "model/histogram.hpp"
#include "writers/element.hpp"
#include "writers/html_text.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

namespace wivex::report {

std::string coordinate(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f", value);
    return text.data();
}

Axis::Axis(double least, double most)
    : bottom_(least < 0 ? -round_ceiling(-least) : 0),
      top_(most > 0 || least >= 0 ? round_ceiling(most) : 0) {}

std::vector<Limit> limits_on(const Run& run, Limit of) {
    std::vector<Limit> limits;
    for (const LimitTally& tally : run.limits) {
        if (tally.limit.has_figure_of(of)) {
            limits.push_back(tally.limit);
        }
    }
    return limits;
}

std::string limits_alternative(const std::vector<Limit>& limits) {
    std::string text;
    for (const Limit& limit : limits) {
        text += (text.empty() ? "; limits: " : ", ") + text_of(limit);
    }
    return text;
}

std::string picture(const std::string& words, const std::string& markup) {
    return element("svg",
                   {{"role", "img"},
                    {"aria-label", words},
                    {"viewBox", "0 0 1000 100"},
                    {"preserveAspectRatio", "none"}},
                   markup);
}

std::string limit_line(const Limit& limit, const std::string& path) {
    return element("path", {{"class", "limit"}, {"d", path}},
                   element("title", escaped(text_of(limit))));
}

std::string limit_lines(const std::vector<Limit>& limits, const Axis& axis) {
    std::string text;
    for (const Limit& limit : limits) {
        const double share = std::clamp(axis.share_of(limit.value), 0.0, 1.0);
        text += limit_line(limit, "M0 " + coordinate(100 - share * 100) + "H1000");
    }
    return text;
}

} // namespace wivex::report

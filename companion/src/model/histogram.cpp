// SPDX-License-Identifier: Apache-2.0
#include "model/histogram.hpp"

#include "common/words.hpp"

#include <algorithm>
#include <cmath>

namespace wivex::report {

namespace {

// The last place that a console can tell.
constexpr double narrowest = 0.001;

} // namespace

double round_ceiling(double value) {
    if (value <= 0) {
        return 1;
    }
    const double power = std::pow(10.0, std::floor(std::log10(value)));
    for (const double step : {1.0, 1.5, 2.0, 3.0, 4.0, 5.0, 6.0, 8.0}) {
        if (step * power >= value) {
            return step * power;
        }
    }
    return 10 * power;
}

std::vector<Bin> histogram_of(const Series& series) {
    if (series.empty()) {
        return {};
    }
    const auto [least, most] = std::ranges::minmax(series.kept(), {}, &Sample::value);
    const double range = static_cast<double>(most.value) - least.value;
    // One bin less than there may be: the first begins at a round number.
    const double width =
        std::max(narrowest, round_ceiling(range / static_cast<double>(most_bins - 1)));
    const double first = std::floor(least.value / width);
    const auto place = [&](double value) {
        const double steps = std::floor(value / width) - first;
        return static_cast<std::size_t>(std::clamp(steps, 0.0, double{most_bins}));
    };
    std::vector<Bin> bins(range <= 0 ? 1 : place(most.value) + 1);
    for (std::size_t i = 0; i < bins.size(); ++i) {
        bins[i].from = rounded((first + static_cast<double>(i)) * width);
        bins[i].to = rounded((first + static_cast<double>(i) + 1) * width);
    }
    for (const Sample& sample : series.kept()) {
        ++bins[std::min(place(sample.value), bins.size() - 1)].count;
    }
    return bins;
}

} // namespace wivex::report

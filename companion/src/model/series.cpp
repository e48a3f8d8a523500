// SPDX-License-Identifier: Apache-2.0
#include "model/series.hpp"

#include <algorithm>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/statistics/univariate_statistics.hpp>
#include <cmath>

namespace wivex::report {

namespace {

// With fewer the ranks of a test are too coarse; with more the pairs take too long.
constexpr std::size_t fewest_tested = 10;
constexpr std::size_t most_tested = 512;

std::vector<Sample> evenly(const std::vector<Sample>& samples) {
    if (samples.size() <= most_tested) {
        return samples;
    }
    std::vector<Sample> chosen;
    for (std::size_t i = 0; i < most_tested; ++i) {
        chosen.push_back(samples[i * samples.size() / most_tested]);
    }
    return chosen;
}

// Kendall's sum over all pairs: how many rise less how many fall. Leaves the slopes of the pairs.
double order_of(const std::vector<Sample>& samples, std::vector<double>& slopes) {
    double order = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        for (std::size_t k = i + 1; k < samples.size(); ++k) {
            const double rise = samples[k].value - samples[i].value;
            order += rise > 0 ? 1 : rise < 0 ? -1 : 0;
            slopes.push_back(rise / (samples[k].iteration - samples[i].iteration));
        }
    }
    return order;
}

// Of Kendall's sum when there is no trend; equal values make it smaller.
double variance_of_order(std::vector<Sample> samples) {
    const auto part = [](double n) { return n * (n - 1) * (2 * n + 5); };
    std::ranges::sort(samples, {}, &Sample::value);
    double sum = part(static_cast<double>(samples.size()));
    for (auto group = samples.begin(); group != samples.end();) {
        const auto end = std::upper_bound(
            group, samples.end(), *group,
            [](const Sample& left, const Sample& right) { return left.value < right.value; });
        sum -= part(static_cast<double>(end - group));
        group = end;
    }
    return sum / 18;
}

} // namespace

void Series::add(std::uint32_t iteration, float value) {
    if (!std::isfinite(value)) {
        return;
    }
    ++count_;
    sum_ += value;
    const Sample sample{iteration, value};
    least_ = kept_.empty() || value < least_.value ? sample : least_;
    most_ = kept_.empty() || value > most_.value ? sample : most_;
    if (!kept_.empty() && ++skipped_ < step_) {
        return;
    }
    skipped_ = 0;
    if (kept_.size() == most_kept) {
        for (std::size_t i = 0; i < most_kept / 2; ++i) {
            kept_[i] = kept_[2 * i];
        }
        kept_.resize(most_kept / 2);
        step_ *= 2;
    }
    kept_.push_back(sample);
}

double Series::quantile(double part) const {
    std::vector<float> values;
    for (const Sample& sample : kept_) {
        values.push_back(sample.value);
    }
    const auto rank =
        static_cast<std::ptrdiff_t>(std::ceil(part * static_cast<double>(values.size())) - 1);
    const auto place =
        values.begin() +
        std::clamp<std::ptrdiff_t>(rank, 0, static_cast<std::ptrdiff_t>(values.size()) - 1);
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

double Series::median() const {
    std::vector<double> values;
    for (const Sample& sample : kept_) {
        values.push_back(sample.value);
    }
    return boost::math::statistics::median(values);
}

Trend Series::trend() const {
    const std::vector<Sample> samples = evenly(kept_);
    Trend trend;
    if (samples.size() < fewest_tested) {
        return trend;
    }
    std::vector<double> slopes;
    slopes.reserve(samples.size() * samples.size() / 2);
    const double order = order_of(samples, slopes);
    const double variance = variance_of_order(samples);
    trend.known = true;
    if (order == 0 || variance <= 0) {
        return trend;
    }
    trend.z = (order > 0 ? order - 1 : order + 1) / std::sqrt(variance);
    trend.probability =
        2 * boost::math::cdf(boost::math::complement(boost::math::normal(), std::fabs(trend.z)));
    trend.change = boost::math::statistics::median(slopes) *
                   (samples.back().iteration - samples.front().iteration);
    const double middle = median();
    trend.share = middle == 0 ? 0 : trend.change / middle;
    return trend;
}

} // namespace wivex::report

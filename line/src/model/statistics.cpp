// SPDX-License-Identifier: Apache-2.0
#include "model/statistics.hpp"

#include <algorithm>
#include <boost/math/distributions/binomial.hpp>
#include <boost/math/distributions/hypergeometric.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <numeric>

namespace wivex::line {

namespace {

namespace math = boost::math;

constexpr std::int64_t fewest_values = 10;

double squared(double value) {
    return value * value;
}

} // namespace

Interval wilson(const Share& share) {
    if (share.all == 0) {
        return {};
    }
    const double z = math::quantile(math::normal(), 0.975);
    const auto count = static_cast<double>(share.all);
    const double rate = share.rate();
    const double scale = 1 + z * z / count;
    const double centre = (rate + z * z / (2 * count)) / scale;
    const double half = z * std::sqrt(rate * (1 - rate) / count + squared(z / (2 * count))) / scale;
    return {std::max(0.0, centre - half), std::min(1.0, centre + half)};
}

Interval chart_limits(double rate, std::int64_t count) {
    if (count == 0 || rate <= 0 || rate >= 1) {
        return {rate, rate};
    }
    const double tail = math::cdf(math::complement(math::normal(), 3.0));
    const math::binomial day(static_cast<double>(count), rate);
    const auto all = static_cast<double>(count);
    return {math::quantile(day, tail) / all, math::quantile(math::complement(day, tail)) / all};
}

double chance_of_more(std::int64_t found, std::int64_t sample, std::int64_t marked,
                      std::int64_t all) {
    if (found <= std::max<std::int64_t>(0, sample + marked - all)) {
        return 1;
    }
    const math::hypergeometric drawn(static_cast<unsigned>(marked), static_cast<unsigned>(sample),
                                     static_cast<unsigned>(all));
    return math::cdf(math::complement(drawn, static_cast<unsigned>(found - 1)));
}

std::vector<bool> stands(std::span<const double> chances) {
    std::vector<std::size_t> order(chances.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::sort(order, {}, [&](std::size_t i) { return chances[i]; });
    std::vector<bool> result(chances.size(), false);
    std::size_t left = chances.size();
    for (const std::size_t i : order) {
        if (chances[i] * static_cast<double>(left) > false_mark_rate) {
            break;
        }
        result[i] = true;
        --left;
    }
    return result;
}

void Sums::add(const Sums& other) {
    if (other.count == 0) {
        return;
    }
    least = count == 0 ? other.least : std::min(least, other.least);
    most = count == 0 ? other.most : std::max(most, other.most);
    count += other.count;
    sum += other.sum;
    squares += other.squares;
}

double Sums::mean() const {
    return count == 0 ? 0 : sum / static_cast<double>(count);
}

double Sums::deviation() const {
    if (count < 2) {
        return 0;
    }
    const double around = squares - sum * mean();
    // What rounding leaves of equal values is no spread.
    return around <= 1e-9 * squares ? 0 : std::sqrt(around / static_cast<double>(count - 1));
}

Sums without(const Sums& all, const Sums& part) {
    return {all.count - part.count, all.sum - part.sum, all.squares - part.squares, all.least,
            all.most};
}

double chance_of_less(const Sums& one, const Sums& others) {
    if (one.count < fewest_values || others.count < fewest_values) {
        return 1;
    }
    const double error = squared(one.deviation()) / static_cast<double>(one.count);
    const double other = squared(others.deviation()) / static_cast<double>(others.count);
    if (error + other <= 0) {
        return one.mean() < others.mean() ? 0 : 1;
    }
    const double freedom =
        squared(error + other) / (squared(error) / static_cast<double>(one.count - 1) +
                                  squared(other) / static_cast<double>(others.count - 1));
    const double t = (one.mean() - others.mean()) / std::sqrt(error + other);
    return math::cdf(math::students_t(freedom), t);
}

std::optional<double> cpk(const Sums& values, double limit, bool is_lower) {
    const double deviation = values.deviation();
    if (deviation <= 0) {
        return {};
    }
    return (is_lower ? values.mean() - limit : limit - values.mean()) / (3 * deviation);
}

} // namespace wivex::line

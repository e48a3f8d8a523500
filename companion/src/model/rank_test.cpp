// SPDX-License-Identifier: Apache-2.0
#include "model/rank_test.hpp"

#include <algorithm>
#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/hypergeometric.hpp>
#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <numeric>

namespace wivex::report {

namespace {

// Above it the exact sum takes long, and shares are as good as exact.
constexpr std::uint64_t most_exact = 20000;

struct Ranked {
    float value;
    bool of_second;
};

struct RankSum {
    double of_second = 0;
    /// Over the groups of equal values, of n each: the sum of n^3 - n.
    double ties = 0;
};

RankSum sum_ranks(std::vector<Ranked> values) {
    std::ranges::sort(values, {}, &Ranked::value);
    RankSum sum;
    for (auto group = values.begin(); group != values.end();) {
        const auto end = std::find_if(
            group, values.end(), [&](const Ranked& other) { return other.value != group->value; });
        const auto before = static_cast<double>(group - values.begin());
        const auto size = static_cast<double>(end - group);
        const double rank = before + (size + 1) / 2;
        sum.of_second += rank * static_cast<double>(std::count_if(
                                    group, end, [](const Ranked& one) { return one.of_second; }));
        sum.ties += size * size * size - size;
        group = end;
    }
    return sum;
}

double two_sided(double z) {
    return 2 * boost::math::cdf(boost::math::complement(boost::math::normal(), std::fabs(z)));
}

double exact_share_test(Share first, Share second) {
    const std::uint32_t hits = first.hits + second.hits;
    const std::uint32_t all = first.all + second.all;
    const boost::math::hypergeometric_distribution<> chance(hits, first.all, all);
    const double seen = boost::math::pdf(chance, first.hits);
    const std::uint32_t least = hits > second.all ? hits - second.all : 0;
    // Equal chances differ in their last bits.
    constexpr double noise = 1 + 1e-7;
    double sum = 0;
    for (std::uint32_t k = least; k <= std::min(hits, first.all); ++k) {
        const double probability = boost::math::pdf(chance, k);
        sum += probability <= seen * noise ? probability : 0;
    }
    return std::min(1.0, sum);
}

double approximate_share_test(Share first, Share second) {
    const double all = static_cast<double>(first.all) + second.all;
    const double hits = (static_cast<double>(first.hits) + second.hits) / all;
    const double variance = hits * (1 - hits) * (1.0 / first.all + 1.0 / second.all);
    if (variance <= 0) {
        return 1;
    }
    const double difference = first.part() - second.part();
    return boost::math::cdf(
        boost::math::complement(boost::math::chi_squared(1), difference * difference / variance));
}

} // namespace

std::optional<RankTest> rank_test(std::span<const float> first, std::span<const float> second) {
    if (first.size() < fewest_ranked || second.size() < fewest_ranked) {
        return {};
    }
    std::vector<Ranked> values;
    values.reserve(first.size() + second.size());
    std::ranges::for_each(first, [&](float value) { values.push_back({value, false}); });
    std::ranges::for_each(second, [&](float value) { values.push_back({value, true}); });
    const RankSum sum = sum_ranks(std::move(values));

    const auto n1 = static_cast<double>(first.size());
    const auto n2 = static_cast<double>(second.size());
    const double n = n1 + n2;
    // How many pairs the second group wins.
    const double wins = sum.of_second - n2 * (n2 + 1) / 2;
    const double distance = wins - n1 * n2 / 2;
    const double variance = n1 * n2 / 12 * (n + 1 - sum.ties / (n * (n - 1)));
    RankTest test;
    test.superiority = wins / (n1 * n2);
    const double beyond = std::max(0.0, std::fabs(distance) - 0.5);
    if (variance > 0 && beyond > 0) {
        test.z = std::copysign(beyond / std::sqrt(variance), distance);
        test.probability = two_sided(test.z);
    }
    return test;
}

double share_test(Share first, Share second) {
    if (first.all == 0 || second.all == 0) {
        return 1;
    }
    first.hits = std::min(first.hits, first.all);
    second.hits = std::min(second.hits, second.all);
    const std::uint64_t all = std::uint64_t{first.all} + second.all;
    return all <= most_exact ? exact_share_test(first, second)
                             : approximate_share_test(first, second);
}

std::vector<double> corrected_for_number(std::span<const double> probabilities) {
    std::vector<std::size_t> order(probabilities.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t i) { return probabilities[i]; });
    std::vector<double> corrected(probabilities.size());
    double largest = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const auto factor = static_cast<double>(order.size() - i);
        largest = std::max(largest, std::min(1.0, factor * probabilities[order[i]]));
        corrected[order[i]] = largest;
    }
    return corrected;
}

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
// The statistics of a production line. Distributions come from Boost.Math.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace wivex::line {

/// So many of so many.
struct Share {
    std::int64_t good = 0;
    std::int64_t all = 0;

    void add(bool is_good) {
        good += is_good ? 1 : 0;
        ++all;
    }
    double rate() const {
        return all == 0 ? 0 : static_cast<double>(good) / static_cast<double>(all);
    }
};

struct Interval {
    double low = 0;
    double high = 1;
};

/// Wilson's interval of the true rate behind a share, 95 in 100 sure. From 0 to 1 without values.
Interval wilson(const Share& share);

/// Within these rates a day of `count` units stays 99.73 times in 100 when the true rate is `rate`
/// (exact binomial limits of a p-chart).
Interval chart_limits(double rate, std::int64_t count);

/// How often chance alone gives `found` or more in `sample` out of `all`, of which `marked` are
/// such (Fisher's exact test, one side).
double chance_of_more(std::int64_t found, std::int64_t sample, std::int64_t marked,
                      std::int64_t all);

/// A deviation is marked when chance gives any mark in a whole table in fewer than one of so many.
constexpr double false_mark_rate = 0.001;

/// Which of the comparisons of one table stand, after Holm's correction for their number.
std::vector<bool> stands(std::span<const double> chances);

/// Sums of figures, which can be joined.
struct Sums {
    std::int64_t count = 0;
    double sum = 0;
    double squares = 0;
    double least = 0;
    double most = 0;

    void add(const Sums& other);
    double mean() const;
    /// Of the values around their mean; 0 with fewer than two.
    double deviation() const;
};

/// What all but one are, together: `all` without `part` (its least and most are those of all).
Sums without(const Sums& all, const Sums& part);

/// How often chance alone makes the mean of `one` as much smaller than that of `others` (Welch's
/// test, one side); 1 with fewer than ten values on a side.
double chance_of_less(const Sums& one, const Sums& others);

/// Cpk against a limit: a third of the distance of the mean from it in standard deviations. Nothing
/// with fewer than two values or without spread.
std::optional<double> cpk(const Sums& values, double limit, bool is_lower);

} // namespace wivex::line

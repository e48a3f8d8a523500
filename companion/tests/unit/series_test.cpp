// SPDX-License-Identifier: Apache-2.0
// What figures over the iterations say: spread and trend.

#include "model/series.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using wivex::report::Series;
using wivex::report::Trend;

Series series_of(std::uint32_t count, auto&& value) {
    Series series;
    for (std::uint32_t i = 0; i < count; ++i) {
        series.add(i, static_cast<float>(value(i)));
    }
    return series;
}

TEST(Series, names_the_iterations_of_the_least_and_the_most) {
    const Series series = series_of(9, [](std::uint32_t i) { return i == 4 ? 1 : i == 7 ? 9 : 5; });
    EXPECT_EQ(series.least().iteration, 4U);
    EXPECT_EQ(series.most().iteration, 7U);
    EXPECT_FLOAT_EQ(series.most().value, 9);
}

TEST(Series, has_the_median_and_the_95th_percentile) {
    const Series series = series_of(100, [](std::uint32_t i) { return i + 1; });
    EXPECT_DOUBLE_EQ(series.median(), 50.5);
    EXPECT_DOUBLE_EQ(series.quantile(0.95), 95);
    EXPECT_DOUBLE_EQ(series_of(1, [](std::uint32_t) { return 3; }).quantile(0.95), 3);
}

TEST(Series, leaves_out_what_is_no_number) {
    Series series;
    series.add(0, std::nanf(""));
    EXPECT_TRUE(series.empty());
}

TEST(Series, finds_a_trend_that_thirds_would_call_steady) {
    // Slow and sure: 8 % in all would be too small to matter, 12 % is not.
    const auto falling = [](double part) {
        return series_of(60, [part](std::uint32_t i) {
            return 94 * (1 - part * i / 59) + 0.5 * std::sin(i * 2.4);
        });
    };
    const Trend large = falling(0.12).trend();
    EXPECT_LT(large.z, -8);
    EXPECT_TRUE(large.is_drift());
    EXPECT_NEAR(large.share, -0.12, 0.02);
    const Trend small = falling(0.08).trend();
    EXPECT_TRUE(small.is_significant());
    EXPECT_FALSE(small.is_drift());
}

TEST(Series, does_not_take_noise_for_a_trend) {
    std::minstd_rand random(7);
    std::normal_distribution<double> noise(50, 25);
    int drifts = 0;
    for (int i = 0; i < 200; ++i) {
        const Trend trend = series_of(30, [&](std::uint32_t) { return noise(random); }).trend();
        drifts += trend.is_drift() ? 1 : 0;
    }
    EXPECT_LE(drifts, 6) << "one in a hundred is what the test allows";
    // A few outliers at the end move the mean of the last third, and no rank.
    const Series outliers =
        series_of(30, [](std::uint32_t i) { return i == 25 || i == 28 ? 400 : 50 + i * 7 % 5; });
    EXPECT_FALSE(outliers.trend().is_drift());
}

TEST(Series, has_no_trend_in_equal_or_few_values) {
    EXPECT_FALSE(series_of(40, [](std::uint32_t) { return 5; }).trend().is_significant());
    EXPECT_FALSE(series_of(9, [](std::uint32_t i) { return i; }).trend().known);
}

TEST(Series, stays_of_bounded_size_and_spans_the_whole_run) {
    const Series series = series_of(100000, [](std::uint32_t i) { return i; });
    EXPECT_FLOAT_EQ(series.most().value, 99999);
    EXPECT_NEAR(series.median(), 50000, 50);
    EXPECT_NEAR(series.quantile(0.95), 95000, 100);
    EXPECT_TRUE(series.trend().is_drift());
}

} // namespace

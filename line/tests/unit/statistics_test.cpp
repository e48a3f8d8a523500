// SPDX-License-Identifier: Apache-2.0
#include "model/deviations.hpp"
#include "model/statistics.hpp"

#include <gmock/gmock.h>

#include <cmath>

namespace wivex::line {

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

Sums sums_of(const std::vector<double>& values) {
    Sums sums;
    for (const double value : values) {
        sums.add({1, value, value * value, value, value});
    }
    return sums;
}

TEST(Wilson, is_the_interval_of_the_textbooks) {
    // 45 of 50: 0.7864 to 0.9565.
    EXPECT_THAT(wilson({45, 50}).low, DoubleNear(0.7864, 0.0001));
    EXPECT_THAT(wilson({45, 50}).high, DoubleNear(0.9565, 0.0001));
    EXPECT_THAT(wilson({10, 10}).high, DoubleNear(1, 1e-12));
    EXPECT_THAT(wilson({10, 10}).low, DoubleNear(0.7225, 0.0001));
    EXPECT_EQ(wilson({0, 0}).low, 0);
    EXPECT_EQ(wilson({0, 0}).high, 1);
}

TEST(ChartLimits, hold_all_days_of_a_line_without_failures) {
    EXPECT_EQ(chart_limits(1, 200).low, 1);
    EXPECT_EQ(chart_limits(0.9, 0).low, 0.9);
}

TEST(ChartLimits, are_close_to_three_deviations) {
    const double deviation = std::sqrt(0.9 * 0.1 / 1000);
    EXPECT_THAT(chart_limits(0.9, 1000).low, DoubleNear(0.9 - 3 * deviation, 0.003));
    EXPECT_THAT(chart_limits(0.9, 1000).high, DoubleNear(0.9 + 3 * deviation, 0.003));
}

TEST(ChanceOfMore, is_fishers_exact_test) {
    // The lady tasting tea: 4 of 4 right with 4 of 8 marked is 1 in 70.
    EXPECT_THAT(chance_of_more(4, 4, 4, 8), DoubleNear(1.0 / 70, 1e-12));
    EXPECT_THAT(chance_of_more(3, 4, 4, 8), DoubleNear(17.0 / 70, 1e-12));
    EXPECT_EQ(chance_of_more(0, 4, 4, 8), 1);
    EXPECT_EQ(chance_of_more(0, 0, 0, 0), 1);
    EXPECT_EQ(chance_of_more(3, 3, 3, 3), 1);
}

TEST(ChanceOfMore, bears_a_million_units) {
    EXPECT_LT(chance_of_more(2000, 200000, 6000, 1000000), 1e-6);
    EXPECT_GT(chance_of_more(1200, 200000, 6000, 1000000), 0.4);
}

TEST(Holm, corrects_for_the_number_of_comparisons) {
    EXPECT_THAT(stands(std::vector{0.0009}), ElementsAre(true));
    EXPECT_THAT(stands(std::vector{0.0009, 0.5}), ElementsAre(false, false));
    // After the first stands, one comparison fewer is left.
    EXPECT_THAT(stands(std::vector{0.0004, 0.0003, 0.5}), ElementsAre(true, true, false));
    EXPECT_TRUE(stands({}).empty());
}

TEST(Sums, know_mean_and_deviation) {
    const Sums sums = sums_of({2, 4, 4, 4, 5, 5, 7, 9});
    EXPECT_EQ(sums.mean(), 5);
    EXPECT_THAT(sums.deviation(), DoubleNear(2.138, 0.001));
    EXPECT_EQ(sums.least, 2);
    EXPECT_EQ(sums.most, 9);
    EXPECT_EQ(sums_of({3}).deviation(), 0);
    EXPECT_EQ(sums_of({0.1, 0.1, 0.1}).deviation(), 0);
}

TEST(Cpk, is_a_third_of_the_distance_in_deviations) {
    const Sums sums = sums_of({88, 89, 90, 91, 92});
    EXPECT_THAT(cpk(sums, 80, true).value(), DoubleNear(10 / (3 * 1.5811), 0.0001));
    EXPECT_THAT(cpk(sums, 95, false).value(), DoubleNear(5 / (3 * 1.5811), 0.0001));
    EXPECT_LT(cpk(sums, 91, true).value(), 0);
}

TEST(Cpk, is_not_known_without_spread) {
    EXPECT_EQ(cpk(sums_of({90}), 80, true), std::nullopt);
    EXPECT_EQ(cpk(sums_of({90, 90}), 80, true), std::nullopt);
    EXPECT_EQ(cpk({}, 80, true), std::nullopt);
}

TEST(Welch, needs_ten_values_on_each_side) {
    const Sums few = sums_of({1, 2, 3});
    const Sums many = sums_of({11, 12, 13, 11, 12, 13, 11, 12, 13, 12});
    EXPECT_EQ(chance_of_less(few, many), 1);
    Sums low = sums_of({1, 2, 3, 1, 2, 3, 1, 2, 3, 2});
    EXPECT_LT(chance_of_less(low, many), 1e-9);
    EXPECT_GT(chance_of_less(many, low), 0.999);
}

TEST(Deviations, mark_the_slow_one_and_not_those_beside_it) {
    const Sums usual = sums_of({2, 2.1, 1.9, 2, 2.1, 1.9, 2, 2.1, 1.9, 2, 2.1, 1.9});
    const Sums slow = sums_of({3, 3.1, 2.9, 3, 3.1, 2.9, 3, 3.1, 2.9, 3, 3.1, 2.9});
    const std::vector<Deviation> rows =
        deviations({{"1.0", {usual}}, {"1.1", {usual}}, {"2.0", {slow}}}, {false});
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_FALSE(rows[0].marked);
    EXPECT_FALSE(rows[1].marked);
    EXPECT_TRUE(rows[2].marked);
}

} // namespace

} // namespace wivex::line

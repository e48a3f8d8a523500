// SPDX-License-Identifier: Apache-2.0
// What of the difference between two reports is more than chance.

#include "model/comparison.hpp"
#include "writers/compare_page.hpp"
#include "writers/compare_words.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace {

using namespace wivex::report;
using namespace testing;

std::vector<float> from_to(int first, int last) {
    std::vector<float> values;
    for (int i = first; i <= last; ++i) {
        values.push_back(static_cast<float>(i));
    }
    return values;
}

std::vector<float> noise(unsigned seed, double middle, std::size_t count) {
    std::minstd_rand random(seed);
    std::normal_distribution<double> normal(middle, 5);
    std::vector<float> values(count);
    std::ranges::generate(values, [&] { return static_cast<float>(normal(random)); });
    return values;
}

// ---- The tests

TEST(RankTest, finds_what_lies_apart) {
    const auto test = rank_test(from_to(1, 8), from_to(9, 16));
    ASSERT_TRUE(test);
    // U = 64, its mean 32, its variance 8 * 8 * 17 / 12.
    EXPECT_NEAR(test->z, (32 - 0.5) / std::sqrt(8.0 * 8 * 17 / 12), 1e-9);
    EXPECT_DOUBLE_EQ(test->superiority, 1);
    EXPECT_NEAR(test->probability, 0.00094, 0.00002);
    EXPECT_LT(rank_test(from_to(9, 16), from_to(1, 8))->z, 0);
}

// All ways in which eight of sixteen values can stand in the second group.
double exact_chance(const std::vector<float>& first, const std::vector<float>& second) {
    std::vector<float> all = first;
    all.insert(all.end(), second.begin(), second.end());
    const auto distance = [&](unsigned chosen) {
        double wins = 0;
        for (unsigned i = 0; i < 16; ++i) {
            for (unsigned k = 0; k < 16; ++k) {
                if ((chosen >> i & 1U) != 0 && (chosen >> k & 1U) == 0) {
                    wins += all[i] > all[k] ? 1 : all[i] == all[k] ? 0.5 : 0;
                }
            }
        }
        return std::fabs(wins - 32);
    };
    const double seen = distance(0xff00);
    double as_far = 0;
    double ways = 0;
    for (unsigned chosen = 0; chosen < 0x10000; ++chosen) {
        if (std::popcount(chosen) == 8) {
            ++ways;
            as_far += distance(chosen) >= seen ? 1 : 0;
        }
    }
    return as_far / ways;
}

TEST(RankTest, agrees_with_counting_all_the_ways) {
    const std::vector<float> first{3, 5, 5, 7, 8, 9, 9, 12};
    for (const auto& second : {std::vector<float>{5, 7, 9, 9, 10, 12, 13, 14},
                               std::vector<float>{9, 9, 11, 12, 12, 13, 15, 18},
                               std::vector<float>{1, 2, 3, 3, 5, 5, 7, 7}}) {
        EXPECT_NEAR(rank_test(first, second)->probability, exact_chance(first, second), 0.01);
    }
}

TEST(RankTest, finds_nothing_in_equal_values) {
    const std::vector<float> same(50, 4);
    EXPECT_DOUBLE_EQ(rank_test(same, same)->probability, 1);
    EXPECT_DOUBLE_EQ(rank_test(same, same)->superiority, 0.5);
}

TEST(RankTest, says_nothing_of_few_values) {
    EXPECT_FALSE(rank_test(from_to(1, 7), from_to(100, 200)));
    EXPECT_FALSE(rank_test({}, {}));
}

TEST(RankTest, takes_chance_for_a_difference_as_often_as_it_says) {
    int found = 0;
    for (unsigned i = 0; i < 400; ++i) {
        const auto test = rank_test(noise(2 * i + 1, 50, 30), noise(2 * i + 2, 50, 30));
        found += test->probability < 0.05 ? 1 : 0;
    }
    EXPECT_GT(found, 5);
    EXPECT_LT(found, 36) << "twenty are meant";
}

TEST(ShareTest, is_that_of_fisher) {
    // Eight cups of tea, and a table of a textbook.
    EXPECT_NEAR(share_test({3, 4}, {1, 4}), 34.0 / 70, 1e-9);
    EXPECT_NEAR(share_test({1, 12}, {9, 12}), 0.002759, 1e-6);
    EXPECT_DOUBLE_EQ(share_test({0, 50}, {0, 60}), 1);
    EXPECT_DOUBLE_EQ(share_test({50, 50}, {60, 60}), 1);
    EXPECT_DOUBLE_EQ(share_test({0, 0}, {5, 60}), 1);
    EXPECT_NEAR(share_test({3, 4}, {1, 4}), share_test({1, 4}, {3, 4}), 1e-12);
}

TEST(ShareTest, goes_over_into_the_other_one_without_a_step) {
    const double exact = share_test({100, 9990}, {140, 9990});
    const double about = share_test({100, 10010}, {140, 10010});
    EXPECT_NEAR(exact, about, 0.003);
    EXPECT_LT(exact, 0.05);
    EXPECT_DOUBLE_EQ(share_test({0, 1000000000}, {0, 1000000000}), 1);
}

TEST(Correction, counts_the_least_chance_as_often_as_there_are_tests) {
    const std::vector<double> chances{0.01, 0.04, 0.03};
    EXPECT_THAT(corrected_for_number(chances),
                ElementsAre(DoubleEq(0.03), DoubleEq(0.06), DoubleEq(0.06)));
    EXPECT_THAT(corrected_for_number({}), IsEmpty());
}

// ---- Two reports

Reported reported(std::uint32_t iterations, std::uint32_t failed, std::vector<float> throughput) {
    Reported side;
    side.name = "a.json";
    side.mode = "legacy-wlan";
    side.verdict = failed == 0 ? "passed" : "failed";
    side.runs = 1;
    side.iterations = iterations;
    side.iterations_kept = iterations;
    side.failed = failed;
    side.throughput = std::move(throughput);
    return side;
}

Change change_of_throughput(double before, double after) {
    return compare(reported(60, 0, noise(1, before, 60)), reported(60, 0, noise(2, after, 60)))
        .figures.at(0)
        .change;
}

TEST(Comparison, tells_worse_from_better_and_from_chance) {
    EXPECT_EQ(change_of_throughput(90, 80), Change::worse);
    EXPECT_EQ(change_of_throughput(80, 90), Change::better);
    EXPECT_EQ(change_of_throughput(90, 90), Change::none);
}

TEST(Comparison, takes_more_time_for_worse) {
    Reported before = reported(60, 0, {});
    Reported after = before;
    before.phases.at(index_of(Phase::dhcp)) = noise(1, 20, 60);
    after.phases.at(index_of(Phase::dhcp)) = noise(2, 30, 60);
    const Comparison slower = compare(before, after);
    EXPECT_EQ(slower.figures.at(0).name, "dhcp");
    EXPECT_EQ(slower.figures.at(0).change, Change::worse);
    EXPECT_TRUE(slower.is_worse());
    std::swap(before, after);
    EXPECT_FALSE(compare(before, after).is_worse());
}

TEST(Comparison, finds_more_failures_of_a_cause) {
    Reported before = reported(200, 1, {});
    Reported after = reported(200, 20, {});
    before.causes["scan-rejected"] = {"SCAN refused", 1};
    after.causes["dhcp-client"] = {"no address by DHCP", 20};
    const Comparison comparison = compare(before, after);
    ASSERT_THAT(comparison.failures, SizeIs(3));
    EXPECT_EQ(comparison.failures.at(0).change, Change::worse);
    EXPECT_EQ(comparison.failures.at(1).words, "no address by DHCP");
    EXPECT_EQ(comparison.failures.at(1).change, Change::worse);
    EXPECT_EQ(comparison.failures.at(2).change, Change::none);
    EXPECT_FALSE(comparison.is_good_enough());
    EXPECT_EQ(outcome_of(comparison), "Significantly worse in 2 of 3 tests");
}

TEST(Comparison, corrects_for_the_number_of_tests) {
    // One chance in twenty is not enough when there are twenty tests.
    Reported before = reported(100, 0, {});
    Reported after = reported(100, 0, {});
    for (int i = 0; i < 20; ++i) {
        before.causes["cause" + std::to_string(i)] = {"", 0};
    }
    after.causes["cause7"] = {"", 6};
    const Comparison comparison = compare(before, after);
    EXPECT_LT(comparison.failures.at(18).probability, 0.05);
    EXPECT_FALSE(comparison.is_worse());
}

TEST(Comparison, does_not_call_good_what_nobody_can_judge) {
    const std::vector<float> values = noise(1, 90, 60);
    EXPECT_TRUE(compare(reported(60, 0, values), reported(60, 0, values)).is_good_enough());
    EXPECT_FALSE(compare(reported(60, 0, values), reported(7, 0, {})).is_good_enough());
    const Comparison lost = compare(reported(60, 0, values), reported(60, 0, {}));
    EXPECT_EQ(lost.figures.at(0).change, Change::lost);
    EXPECT_FALSE(lost.is_good_enough());
    Reported broke_off = reported(60, 0, values);
    broke_off.verdict = "unknown";
    broke_off.verdict_words = "Not known: it broke off";
    const Comparison open = compare(reported(60, 0, values), broke_off);
    EXPECT_FALSE(open.is_good_enough());
    EXPECT_EQ(outcome_of(open), "Not known: the verdict on a.json: Not known: it broke off");
}

// ---- Its page

TEST(ComparisonPage, is_never_shown_as_a_pass) {
    const std::vector<float> values = noise(1, 90, 60);
    const Comparison same = compare(reported(60, 0, values), reported(60, 0, values));
    EXPECT_THAT(write_comparison_page(same),
                HasSubstr("<h2 class=\"verdict plain\">No significant"));
    const Comparison few = compare(reported(60, 0, values), reported(7, 0, {}));
    EXPECT_THAT(write_comparison_page(few), HasSubstr("<h2 class=\"verdict open\">Not known"));
    const Comparison worse = compare(reported(60, 0, values), reported(60, 60, values));
    EXPECT_THAT(write_comparison_page(worse), HasSubstr("<h2 class=\"verdict failed\">Signif"));
}

TEST(ComparisonPage, shows_what_the_files_say_as_text) {
    Reported side = reported(60, 3, {});
    side.name = "<script>alert(1)</script>";
    side.serial = "<b>";
    side.verdict_words = "<i>";
    side.causes["x"] = {"<u>", 3};
    const std::string page = write_comparison_page(compare(side, side));
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(page, Not(HasSubstr("<b>")));
    EXPECT_THAT(page, Not(HasSubstr("<i>")));
    EXPECT_THAT(page, Not(HasSubstr("<u>")));
    EXPECT_THAT(page, HasSubstr("&lt;script&gt;alert(1)"));
}

TEST(ComparisonSummary, says_both_sides_and_every_test) {
    const std::string text = comparison_summary(
        compare(reported(60, 0, from_to(101, 160)), reported(60, 0, from_to(41, 100))));
    EXPECT_EQ(text, "Significantly worse in 1 of 2 tests\n"
                    "  before: a.json: legacy-wlan, 1 run, 60 iterations, verdict passed\n"
                    "  after:  a.json: legacy-wlan, 1 run, 60 iterations, verdict passed\n"
                    "  iterations that failed: 0 of 60 (0 %) -> 0 of 60 (0 %), no significant "
                    "difference, chance 1\n"
                    "  throughput, median: 130.5 Mbit/s -> 70.5 Mbit/s, -60 Mbit/s (-46.0 %), "
                    "significantly worse, chance < 0.001\n");
}

} // namespace

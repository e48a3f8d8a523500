// SPDX-License-Identifier: Apache-2.0
#include "model/attempts.hpp"

#include <gtest/gtest.h>

namespace wivex::line {

namespace {

RunKey run(std::int64_t run_no, std::optional<std::int64_t> attempt, const char* report,
           bool passed, const char* cause, std::optional<Moment> began) {
    return {run_no, attempt, report, passed, cause, "S1", "", began};
}

TEST(Attempts, pass_only_when_all_their_runs_have) {
    const std::vector<RunKey> runs{run(1, 1, "a", true, "", 100),
                                   run(2, 1, "b", false, "dhcp-client", 200),
                                   run(3, 1, "c", false, "killed", 300)};
    const std::vector<Attempt> attempts = attempts_of(runs);
    ASSERT_EQ(attempts.size(), 1U);
    EXPECT_FALSE(attempts[0].passed);
    EXPECT_EQ(attempts[0].cause, "dhcp-client");
    EXPECT_EQ(attempts[0].began, 100);
}

TEST(Attempts, follow_the_numbers_of_the_station_not_its_clock) {
    const std::vector<RunKey> runs{run(1, 2, "a", true, "", 100),
                                   run(2, 1, "b", false, "open", 200)};
    const std::vector<Attempt> attempts = attempts_of(runs);
    ASSERT_EQ(attempts.size(), 2U);
    EXPECT_EQ(attempts[0].number, 1);
    EXPECT_FALSE(first_attempt(attempts).passed);
}

TEST(Attempts, are_one_a_report_without_numbers_and_follow_the_clock) {
    const std::vector<RunKey> runs{
        run(1, {}, "late", true, "", 300), run(2, {}, "early", false, "open", 200),
        run(3, {}, "late", true, "", 310), run(4, {}, "undated", true, "", {})};
    const std::vector<Attempt> attempts = attempts_of(runs);
    ASSERT_EQ(attempts.size(), 3U);
    EXPECT_EQ(attempts[0].began, 200);
    EXPECT_EQ(attempts[1].runs.size(), 2U);
    EXPECT_EQ(attempts[2].began, std::nullopt);
}

TEST(Attempts, show_no_first_pass_when_the_first_is_missing) {
    const std::vector<RunKey> runs{run(1, 2, "a", true, "", 100)};
    const Attempt first = first_attempt(attempts_of(runs));
    EXPECT_FALSE(first.passed);
    EXPECT_EQ(first.cause, "first-attempt-not-seen");
}

} // namespace

} // namespace wivex::line

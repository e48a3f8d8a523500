// SPDX-License-Identifier: Apache-2.0
#include "common/deadline_timer.hpp"
#include "odd_calls.hpp"

#include <gtest/gtest.h>

namespace {

using wivex::DeadlineTimer;

TEST(DeadlineTimer, runs_until_its_seconds_have_passed) {
    DeadlineTimer timer;
    timer.start(60);
    EXPECT_FALSE(timer.expired());
}

TEST(DeadlineTimer, stays_expired_once_it_has_expired) {
    DeadlineTimer timer;
    timer.start(0);
    EXPECT_TRUE(timer.expired());
    EXPECT_TRUE(timer.expired());
}

TEST(DeadlineTimer, that_was_never_started_has_expired) {
    DeadlineTimer timer;
    EXPECT_TRUE(timer.expired());
}

TEST(DeadlineTimer, stays_expired_when_the_clock_is_put_back_to_the_year_it_begins_in) {
    std::time_t now = 1'000'000'000;
    wivex::test_support::OddCalls calls;
    calls.time = [&now] { return now; };
    DeadlineTimer timer;
    timer.start(30);
    now += 30;
    EXPECT_TRUE(timer.expired());
    now = 5;
    EXPECT_TRUE(timer.expired());
}

} // namespace

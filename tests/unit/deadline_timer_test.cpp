// SPDX-License-Identifier: Apache-2.0
#include "common/deadline_timer.hpp"

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

} // namespace

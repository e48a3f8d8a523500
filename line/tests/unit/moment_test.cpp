// SPDX-License-Identifier: Apache-2.0
#include "common/moment.hpp"

#include <gtest/gtest.h>

namespace wivex::line {

namespace {

TEST(Moment, is_the_same_in_every_zone) {
    EXPECT_EQ(moment_of("1970-01-01T00:00:00Z"), 0);
    EXPECT_EQ(moment_of("2026-11-22T06:15:00+01:00"), moment_of("2026-11-22T05:15:00Z"));
    EXPECT_EQ(moment_of("2026-11-22T06:15:00.123-05:30"), moment_of("2026-11-22T11:45:00Z"));
}

TEST(Moment, is_nothing_without_a_zone_or_of_a_date_that_is_none) {
    for (const char* const text :
         {"", "2026-11-22", "2026-11-22T06:15:00", "2026-11-22T06:15:00+0100",
          "2026-02-29T00:00:00Z", "2026-13-01T00:00:00Z", "2026-11-22T24:00:00Z",
          "2026-11-22T06:15:00Zx", "2026-11-22T06:15:00.Z", "-026-11-22T06:15:00Z"}) {
        EXPECT_EQ(moment_of(text), std::nullopt) << text;
    }
}

TEST(Moment, has_spans_with_a_unit) {
    EXPECT_EQ(span_of("90s"), 90);
    EXPECT_EQ(span_of("30m"), 1800);
    EXPECT_EQ(span_of("1h"), 3600);
    EXPECT_EQ(span_of("7d"), 604800);
    for (const char* const text : {"", "1", "h", "0h", "-1h", "1 h", "1w", "1hh", "9999999999d"}) {
        EXPECT_EQ(span_of(text), std::nullopt) << text;
    }
}

} // namespace

} // namespace wivex::line

// SPDX-License-Identifier: Apache-2.0
#include "diag/access_points.hpp"

#include <gtest/gtest.h>

#include <string_view>

namespace wivex {
namespace {

AccessPoint with_bssid(std::string_view bssid) {
    AccessPoint access_point;
    access_point.bssid = FixedText<18>(bssid);
    return access_point;
}

TEST(AccessPointList, begins_empty) {
    const AccessPointList<2> list;
    EXPECT_TRUE(list.empty());
    EXPECT_FALSE(list.full());
    EXPECT_TRUE(list.all().empty());
}

TEST(AccessPointList, keeps_the_order_in_which_it_is_filled) {
    AccessPointList<2> list;
    list.append(with_bssid("first"));
    EXPECT_FALSE(list.empty());
    EXPECT_FALSE(list.full());
    list.append(with_bssid("second"));
    EXPECT_FALSE(list.empty());
    EXPECT_TRUE(list.full());
    ASSERT_EQ(list.all().size(), 2U);
    EXPECT_EQ(list.all()[0].bssid.view(), "first");
    EXPECT_EQ(list.all()[1].bssid.view(), "second");
}

TEST(AccessPointList, leaves_out_what_does_not_fit) {
    AccessPointList<1> list;
    list.append(with_bssid("first"));
    list.append(with_bssid("second"));
    EXPECT_EQ(list.size(), 1U);
    EXPECT_EQ(list.all()[0].bssid.view(), "first");
}

TEST(AccessPoint, counts_as_seen_unless_it_is_told_to_be_lost) {
    EXPECT_EQ(AccessPoint{}.status, 0);
}

} // namespace
} // namespace wivex

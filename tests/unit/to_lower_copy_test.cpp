// SPDX-License-Identifier: Apache-2.0
#include "diag/to_lower_copy.hpp"

#include <gtest/gtest.h>

namespace {

TEST(ToLowerCopy, lowers_letters_and_leaves_the_rest) {
    EXPECT_EQ("0a5c:bd1d", wivex::to_lower_copy("0A5C:bD1d"));
    EXPECT_EQ("", wivex::to_lower_copy(""));
    EXPECT_EQ("\xc4", wivex::to_lower_copy("\xc4"));
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "diag/nl80211_scan.hpp"
#include "fake_supplicant.hpp"
#include "modes/scan.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

namespace wivex {
namespace {

class ScanOutput : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        test_support::use_private_tmp();
    }
    void TearDown() override {
        ::unlink(scan_listing);
    }
    static void write_listing(const char* text) {
        std::ofstream(scan_listing) << text;
    }
};

TEST_F(ScanOutput, counts_when_something_was_heard) {
    write_listing("BSS 02:00:00:00:01:0A \n");
    EXPECT_EQ(check_scan_output(), 0);
}

TEST_F(ScanOutput, that_is_empty_says_that_nothing_was_heard) {
    write_listing("");
    EXPECT_EQ(check_scan_output(), -3);
}

TEST_F(ScanOutput, that_is_missing_counts_as_a_success) {
    EXPECT_EQ(check_scan_output(), 0);
}

} // namespace
} // namespace wivex

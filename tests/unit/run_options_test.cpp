// SPDX-License-Identifier: Apache-2.0
// What a run starts with before its command line is read.

#include "common/run_options.hpp"

#include <gtest/gtest.h>

namespace {

using wivex::RunOptions;

TEST(RunOptionsAtTheStart, choose_no_mode) {
    const RunOptions options;
    for (const auto mode :
         {&RunOptions::loopback_mode, &RunOptions::mac_mode, &RunOptions::scan_mode,
          &RunOptions::p2p_device_mode, &RunOptions::go_mode, &RunOptions::wlan_legacy_mode,
          &RunOptions::p2p_client_mode, &RunOptions::softap_mode}) {
        EXPECT_EQ(options.*mode, 0);
    }
    EXPECT_EQ(options.scan_ssid, nullptr);
}

TEST(RunOptionsAtTheStart, ask_for_nothing_special) {
    const RunOptions options;
    EXPECT_EQ(options.iteration_count, 0);
    EXPECT_EQ(options.iteration_interval, 0);
    EXPECT_EQ(options.debug, 0);
    EXPECT_EQ(options.config_choice, 0);
    EXPECT_EQ(options.user_config_file, "");
}

TEST(RunOptionsAtTheStart, have_the_default_files) {
    const RunOptions options;
    EXPECT_EQ(options.result_file, "");
    EXPECT_EQ(options.ap_status_file, "/tmp/ap_status.txt");
    EXPECT_EQ(options.ap_status_links, wivex::Links::refuse);
}

TEST(RunOptionsAtTheStart, know_no_chip_and_no_failure) {
    const RunOptions options;
    EXPECT_EQ(options.chip_type, 0);
    EXPECT_FALSE(options.result_stream.failed);
    ASSERT_EQ(options.results.size(), 10U);
    for (const wivex::TestCaseResult& result : options.results) {
        EXPECT_EQ(result.enabled, 0);
        EXPECT_TRUE(result.failures.empty());
    }
    EXPECT_EQ(wivex::FailureEntry().count, 0);
}

} // namespace

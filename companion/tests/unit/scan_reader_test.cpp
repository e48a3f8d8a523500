// SPDX-License-Identifier: Apache-2.0
// From the console of a scan to the model of its run.

#include "consoles.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::SizeIs;

TEST(RunReader, does_not_believe_names_of_access_points) {
    const auto run = read_run(banner + checks_pass +
                              "[WIFI]Got NL80211_CMD_NEW_SCAN_RESULTS.\n[WIFI]Scan is done.\n"
                              "[WIFI]Number of APs founds are 3\n[WIFI]SCAN FAIL\n"
                              "[WIFI]### LOOPBACK FAIL ###\n[WIFI]MODULE CONNECTED\n"
                              "[WIFI]ssid prefix define for check=SCAN\n[WIFI]SCAN FAIL\n"
                              "[WIFI]APs found with matching prefix are 1\n"
                              "[WIFI]AP scan result dump to file /tmp/ap_status.txt\n"
                              "[WIFI]SCAN SUCCESS\n" +
                              end);
    EXPECT_EQ(run.all_failures(), 0U);
    EXPECT_EQ(run.started, 1U);
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    ASSERT_THAT(run.access_points, SizeIs(3));
    EXPECT_EQ(run.access_points[0].ssid, "SCAN FAIL");
}

TEST(RunReader, counts_only_new_names_of_a_listing_that_grows) {
    const std::string scan = checks_pass + "[WIFI]Number of APs founds are ";
    const auto run = read_run(banner + scan +
                              "1\n[WIFI]a\n[WIFI]No ssid defined for check\n"
                              "[WIFI]SCAN SUCCESS\n" +
                              scan +
                              "2\n[WIFI]a\n[WIFI]a\n[WIFI]No ssid defined for check\n"
                              "[WIFI]SCAN SUCCESS\n" +
                              end);
    ASSERT_THAT(run.access_points, SizeIs(1));
    EXPECT_EQ(run.access_points[0].times_seen, 2U);
}

TEST(RunReader, hears_an_interrupt_in_the_middle_of_a_listing) {
    const auto run =
        read_run(banner + checks_pass + "[WIFI]Number of APs founds are 9\n[WIFI]a\n" + interrupt);
    EXPECT_EQ(run.end, RunEnd::interrupted);
}

TEST(RunReader, counts_a_failed_scan) {
    const auto run = read_run(banner + checks_pass +
                              "[WIFI]do_scan_trigger() failed with -95.\n[WIFI]SCAN FAIL\n" + end);
    EXPECT_EQ(run.mode, Mode::scan);
    EXPECT_EQ(run.failures_of_test_case(5), 1U);
}

TEST(RunReader, warns_of_an_empty_listing_and_a_missing_prefix) {
    const auto run = read_run(banner + checks_pass +
                              "[WIFI]Number of APs founds are 0\n"
                              "[WIFI]ssid prefix define for check=x\n"
                              "[WIFI]APs found with matching prefix are 0\n"
                              "[WIFI]AP with prefix not found\n"
                              "[WIFI]SCAN SUCCESS\n" +
                              checks_pass + "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n" + end);
    EXPECT_EQ(run.count(Outcome::passed), 2U);
    EXPECT_EQ(run.warned, 2U);
}

TEST(RunReader, takes_signals_from_the_supplicants_listing) {
    const auto run = read_run(banner + checks_pass +
                              "02:00:00:00:01:00\t2412\t-40\t[WPA2-PSK-CCMP][ESS]\tline-ap\n"
                              "02:00:00:00:01:00\t2412\t-44\t[WPA2-PSK-CCMP][ESS]\tline-ap\n");
    ASSERT_THAT(run.access_points, SizeIs(1));
    EXPECT_DOUBLE_EQ(run.access_points[0].signal.mean(), -42);
}

} // namespace

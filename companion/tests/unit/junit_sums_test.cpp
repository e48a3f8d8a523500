// SPDX-License-Identifier: Apache-2.0
// junit.xml of a run that is too long to be listed one by one, and what it tells of MAC addresses.

#include "consoles.hpp"
#include "writers/junit_writer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::ElementsAre;

const std::string scan_began = checks_pass + "Scan Command Sent Successfully...\n";

// As many iterations as are listed, and more behind them.
pugi::xml_document long_run(const std::string& behind) {
    std::string console = banner + refused + scan_began;
    for (std::size_t i = 2; i < 5000; ++i) {
        console += legacy_pass;
    }
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(write_junit(read(console + behind + interrupt)).c_str()));
    return document;
}

// "the class: what it came to", of all test cases that are a sum.
std::vector<std::string> sums_in(const pugi::xml_document& document, std::string_view name) {
    std::vector<std::string> sums;
    for (const pugi::xml_node test :
         document.child("testsuites").child("testsuite").children("testcase")) {
        if (test.attribute("name").value() == name) {
            const pugi::xml_node result = test.first_child();
            sums.push_back(std::string(test.attribute("classname").value()) + ": " +
                           (result.empty() ? "passed" : result.name()) + " " +
                           result.attribute("type").value() + " " +
                           result.attribute("message").value());
        }
    }
    return sums;
}

TEST(JunitSums, tell_how_many_failed) {
    const auto document = long_run(refused + refused + legacy_pass + scan_began);
    EXPECT_THAT(
        sums_in(document, "iterations 5000 to 5003"),
        ElementsAre("wivex.legacy-wlan.iterations: failure failure 2 of 4 failed",
                    "wivex.legacy-wlan.module: passed  ", "wivex.legacy-wlan.driver: passed  ",
                    "wivex.legacy-wlan.scan: failure failure 2 of 4 failed",
                    "wivex.legacy-wlan.associate: passed  ", "wivex.legacy-wlan.dhcp: passed  ",
                    "wivex.legacy-wlan.traffic: passed  ",
                    "wivex.legacy-wlan.disconnect: passed  "));
    EXPECT_STREQ(document.child("testsuites").child("testsuite").child("system-out").text().get(),
                 "The console had no times: every time is 0.\n"
                 "When the run began is not known: the time stamp is a placeholder.\n"
                 "Only the first 5000 of 5004 iterations are listed one by one; the others are "
                 "summed up.\n");
}

TEST(JunitSums, show_no_pass_where_one_is_unfinished) {
    EXPECT_THAT(
        sums_in(long_run(legacy_pass + scan_began), "iterations 5000 to 5001"),
        ElementsAre("wivex.legacy-wlan.iterations: skipped  ", "wivex.legacy-wlan.module: passed  ",
                    "wivex.legacy-wlan.driver: passed  ", "wivex.legacy-wlan.scan: skipped  ",
                    "wivex.legacy-wlan.associate: passed  ", "wivex.legacy-wlan.dhcp: passed  ",
                    "wivex.legacy-wlan.traffic: passed  ",
                    "wivex.legacy-wlan.disconnect: passed  "));
}

TEST(JunitSums, pass_whatever_came_before_them) {
    EXPECT_THAT(
        sums_in(long_run(legacy_pass + legacy_pass), "iterations 5000 to 5001"),
        ElementsAre("wivex.legacy-wlan.iterations: passed  ", "wivex.legacy-wlan.module: passed  ",
                    "wivex.legacy-wlan.driver: passed  ", "wivex.legacy-wlan.scan: passed  ",
                    "wivex.legacy-wlan.associate: passed  ", "wivex.legacy-wlan.dhcp: passed  ",
                    "wivex.legacy-wlan.traffic: passed  ",
                    "wivex.legacy-wlan.disconnect: passed  "));
}

TEST(JunitSums, leave_a_phase_out_that_none_reached) {
    EXPECT_THAT(sums_in(long_run(refused), "iterations 5000 to 5000"),
                ElementsAre("wivex.legacy-wlan.iterations: failure failure 1 of 1 failed",
                            "wivex.legacy-wlan.module: passed  ",
                            "wivex.legacy-wlan.driver: passed  ",
                            "wivex.legacy-wlan.scan: failure failure 1 of 1 failed"));
}

TEST(JunitProperties, have_the_addresses_of_kernel_and_chip) {
    const std::string text =
        write_junit(read(banner + checks_pass +
                         "[WIFI]MAC from kernel ioctl :- 02:00:00:00:0A:01\n"
                         "[WIFI]fw_mac_addr is 02:00:00:00:0a:02 and its length is 17\n"
                         "[WIFI] prev_mac [02:00:00:00:0A:01] curr_mac [02:00:00:00:0a:02]\n"
                         "[WIFI]MAC PRINT SUCCESS\n" +
                         end));
    EXPECT_THAT(text, testing::HasSubstr(
                          "   <property name=\"mac_kernel\" value=\"02:00:00:00:0A:01\" />\n"
                          "   <property name=\"mac_chip\" value=\"02:00:00:00:0a:02\" />\n"));
}

TEST(JunitFailure, names_what_lies_behind_its_cause) {
    const std::string wrong_key =
        checks_pass +
        "Scan Command Sent Successfully...\n"
        "<3>CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"line-ap\" auth_failures=1 "
        "duration=10 reason=WRONG_KEY\n"
        "Unable to Connect Time out!!!\nFail to send Command SELECT_NETWORK !!!\n"
        "ERROR:SELECT_NETWORK COMMAND FAILED\n" +
        session_closes;
    EXPECT_THAT(write_junit(read(banner + wrong_key + end)),
                testing::HasSubstr("<failure message=\"SELECT_NETWORK failed or timed out: wrong "
                                   "pass phrase\" type=\"network-not-selected\">"));
}

TEST(JunitFailure, that_is_concluded_says_so) {
    EXPECT_THAT(write_junit(read(banner + checks_pass + scan_and_associate + take_address +
                                 "IPERF not set in conf. file!!\nDISABLE_NETWORK 0 \n" +
                                 session_closes + end)),
                testing::HasSubstr("\nConcluded: standard error is not part of this console.\n"));
}

TEST(JunitFailure, that_the_result_file_leaves_out_says_so) {
    EXPECT_THAT(write_junit(read(banner + checks_pass +
                                 "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n"
                                 "unable to start p2p group bench-ap \n" +
                                 session_closes + end)),
                testing::HasSubstr(" (not counted in the result file)\" type="));
}

TEST(JunitFailure, whose_lines_are_not_kept_leads_to_the_counts) {
    std::string console = banner;
    for (int i = 0; i < 101; ++i) {
        console += refused;
    }
    EXPECT_THAT(write_junit(read(console + end)),
                testing::HasSubstr("  <testcase name=\"iteration 100\" "
                                   "classname=\"wivex.legacy-wlan.scan\" time=\"0.000\">\n"
                                   "   <failure message=\"failed; see run.json for the counts\" "
                                   "type=\"failure\" />\n"));
}

TEST(JunitNotes, say_that_the_stamps_name_no_zone) {
    const std::string stamp = "2026-01-12T10:11:12 ";
    EXPECT_THAT(
        write_junit(read(stamp + "[WIFI]WIVEX2\n" + stamp + "[WIFI]Chip type is = 2\n" + stamp +
                         "[WIFI]MODULE CONNECTED\n")),
        testing::HasSubstr("<system-out>The time stamps name no zone: they were read as local "
                           "times of the machine that made this report.\n</system-out>"));
}

TEST(JunitSuiteOfRunsLeftOut, counts_them_by_verdict) {
    std::string console = banner + refused + end + banner + refused + end;
    for (int i = 0; i < 10; ++i) {
        console += banner + legacy_pass + end;
    }
    EXPECT_THAT(write_junit(read(console)),
                testing::HasSubstr("   <error message=\"2 runs\" type=\"failed\" />\n"));
}

} // namespace

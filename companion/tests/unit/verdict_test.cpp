// SPDX-License-Identifier: Apache-2.0
// Which run has passed, and which has not: the one verdict that every output asks for.

#include "consoles.hpp"
#include "model/verdict.hpp"
#include "model/weak_passes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Judgement judged(const std::string& console, const ReaderOptions& options = {}) {
    return judge(read_run(console, options));
}

RunVerdict verdict_on(const std::string& console) {
    return judged(console).verdict;
}

// ---- Passed

TEST(Verdict, is_passed_when_everything_was_seen) {
    EXPECT_EQ(verdict_on(passed_run), RunVerdict::passed);
    EXPECT_THAT(judged(passed_run).missing, IsEmpty());
    EXPECT_EQ(verdict_sentence(read_run(passed_run)), "The iteration passed");
}

// ---- Failed

TEST(Verdict, is_failed_when_an_iteration_failed) {
    const std::string console = banner + legacy_pass + refused + end;
    EXPECT_EQ(verdict_on(console), RunVerdict::failed);
    EXPECT_THAT(judged(console).missing, Contains("1 of 2 iterations failed"));
}

TEST(Verdict, is_failed_when_the_tool_says_that_results_were_lost) {
    for (const char* line :
         {"[WIFI]ERROR:run ended early: out of memory\n", "[WIFI]Unable to write results\n",
          "[WIFI]Unable to write Result File: /root/WIFIResult: No space left on device\n",
          "[WIFI]Unable to open Result File: /root/WIFIResult\n", "[WIFI]Out of memory\n"}) {
        EXPECT_EQ(verdict_on(banner + legacy_pass + line + end), RunVerdict::failed) << line;
        EXPECT_EQ(verdict_on(banner + legacy_pass + line + clean_up), RunVerdict::failed) << line;
    }
}

TEST(Verdict, is_failed_when_something_failed_that_the_tool_does_not_count) {
    EXPECT_EQ(verdict_on(banner + without_address + end), RunVerdict::failed);
    EXPECT_THAT(
        judged(banner + without_address + end).missing,
        ElementsAre("no address by DHCP: 1 time; the test went on, and the result file does "
                    "not count it"));
}

TEST(Verdict, is_failed_when_the_run_never_started) {
    EXPECT_EQ(verdict_on(banner + "[WIFI]Configuration file problem.Plese check x\n"),
              RunVerdict::failed);
}

// ---- Not known

TEST(Verdict, is_not_known_without_the_line_that_announces_the_result_file) {
    const std::string console = without(passed_run, "[WIFI]ResultFile: /root/WIFIResult Updated\n");
    EXPECT_EQ(verdict_on(console), RunVerdict::unknown);
    EXPECT_THAT(judged(console).missing, ElementsAre("no result file was announced"));
}

TEST(Verdict, is_not_known_without_the_end_of_the_tool) {
    EXPECT_EQ(verdict_on(without(passed_run, "[WIFI]Reset Value of sigterm_var\n")),
              RunVerdict::unknown);
}

TEST(Verdict, is_not_known_without_the_beginning) {
    EXPECT_EQ(verdict_on(legacy_pass + end), RunVerdict::unknown);
}

TEST(Verdict, is_not_known_at_any_cut) {
    for (std::size_t at = 0; at < passed_run.size(); ++at) {
        if (passed_run[at] == '\n' && at + 1 < passed_run.size()) {
            EXPECT_NE(verdict_on(passed_run.substr(0, at + 1)), RunVerdict::passed) << at;
        }
    }
}

TEST(Verdict, is_not_known_of_a_run_that_broke_off_or_was_killed) {
    const Log log = read(banner + legacy_pass + banner + legacy_pass + end);
    EXPECT_EQ(judge(log.runs.at(0)).verdict, RunVerdict::unknown);
    EXPECT_EQ(verdict_on(banner + legacy_pass + "[WIFI] Got Kill signal...\n" + clean_up +
                         "[WIFI] Done..\n"),
              RunVerdict::unknown);
}

TEST(Verdict, is_not_known_when_the_tool_says_what_nobody_knows) {
    const std::string console = banner + legacy_pass + "[WIFI]A line of next year\n" + end;
    EXPECT_EQ(verdict_on(console), RunVerdict::unknown);
    EXPECT_THAT(judged(console).missing, Contains(HasSubstr("[WIFI]A line of next year")));
    EXPECT_EQ(verdict_on(banner + legacy_pass + "ERROR of a new kind\n" + end),
              RunVerdict::unknown);
    EXPECT_EQ(verdict_on(banner + legacy_pass + "usb 1-1: error\n" + end), RunVerdict::passed);
}

TEST(Verdict, is_not_known_when_a_check_has_no_verdict) {
    for (const char* line : {"[WIFI]MODULE CONNECTED\n", "[WIFI]WIFI DRIVER READY\n"}) {
        EXPECT_EQ(verdict_on(without(passed_run, line)), RunVerdict::unknown) << line;
    }
    const std::string mac = checks_pass + "[WIFI]Result file direcotry is /root/\n";
    EXPECT_EQ(verdict_on(banner + mac + "[WIFI]MAC PRINT SUCCESS\n" + end), RunVerdict::passed);
    EXPECT_EQ(verdict_on(banner + mac + end), RunVerdict::unknown);
    EXPECT_EQ(verdict_on(banner + checks_pass + end), RunVerdict::unknown) << "no mode was seen";
}

TEST(Verdict, is_not_known_when_iterations_are_missing) {
    ReaderOptions options;
    options.iterations = 3;
    EXPECT_EQ(judged(banner + legacy_pass + legacy_pass + end, options).verdict,
              RunVerdict::unknown);
    EXPECT_EQ(judged(banner + legacy_pass + legacy_pass + legacy_pass + end, options).verdict,
              RunVerdict::passed);
}

TEST(Verdict, is_never_green_in_the_softap_mode) {
    EXPECT_EQ(verdict_on(banner + checks_pass + "[WIFI]ERROR:create softAP problem\n"),
              RunVerdict::unknown);
    EXPECT_EQ(verdict_on(banner + "[WIFI]MODULE CONNECTED\n"
                                  "[WIFI]ERROR:WiFi driver is not insmoded properly, Please check\n"
                                  "[WIFI]softAP created successfuly.\n"),
              RunVerdict::failed);
}

// ---- Interrupted

TEST(Verdict, is_one_of_its_own_for_an_interrupted_run) {
    const std::string console = banner + legacy_pass + checks_pass + interrupt;
    EXPECT_EQ(verdict_on(console), RunVerdict::interrupted);
    EXPECT_EQ(verdict_sentence(read_run(console)),
              "Interrupted by ^C: 1 of 2 iterations passed, none failed");
    EXPECT_EQ(verdict_on(banner + refused + interrupt), RunVerdict::failed);
}

TEST(Verdict, is_passed_for_an_own_group_that_served_a_client_until_the_interrupt) {
    EXPECT_EQ(verdict_on(banner + group_began + "Client connected 1.\n" + interrupt),
              RunVerdict::passed);
    EXPECT_EQ(verdict_on(banner + group_began + interrupt), RunVerdict::interrupted);
    EXPECT_EQ(verdict_on(banner + group_began +
                         "Client connected 1.\n"
                         "Client not able to connect...continuing \n" +
                         interrupt),
              RunVerdict::failed);
    EXPECT_EQ(verdict_on(banner + group_began + "Client connected 1.\n" + session_closes + end),
              RunVerdict::unknown);
}

TEST(Verdict, is_failed_for_a_refused_group_although_the_result_file_says_passed) {
    const auto run = read_run(banner + checks_pass +
                              "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n"
                              "unable to start p2p group bench-ap \n" +
                              session_closes + end);
    EXPECT_EQ(judge(run).verdict, RunVerdict::failed);
    EXPECT_THAT(weak_passes(run),
                ElementsAre("The result file says \"Test case 7 passed\" although the mode failed "
                            "1 time with a code that it does not record."));
}

// ---- Several runs

TEST(Verdict, is_not_passed_when_a_run_that_was_left_out_failed) {
    std::string console = banner + refused + end;
    for (int i = 0; i < 10; ++i) {
        console += passed_run;
    }
    const Log log = read(console);
    EXPECT_EQ(log.dropped_runs, 3U);
    EXPECT_EQ(judge(log), RunVerdict::failed);
    EXPECT_EQ(verdict_sentence(log), "11 runs: 1 failed, 10 passed");
}

TEST(Verdict, is_not_known_when_there_is_no_run) {
    EXPECT_EQ(judge(read("nothing of the tool\n")), RunVerdict::unknown);
}

TEST(Verdict, belongs_to_the_run_whose_beginning_was_lost) {
    const Log log = read(passed_run + without(banner + refused + end,
                                              "[WIFI]WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE\n"));
    ASSERT_EQ(log.runs.size(), 2U);
    EXPECT_EQ(judge(log), RunVerdict::failed);
}

TEST(Verdict, does_not_take_the_next_run_for_names_of_access_points) {
    const std::string broken = banner + checks_pass + "[WIFI]Number of APs founds are 9\n[WIFI]a\n";
    const std::string absent = "\n[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n"
                               "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n"
                               "[WIFI]WIFI DRIVER READY\n[WIFI]SCAN SUCCESS\n";
    EXPECT_EQ(judge(read(broken + banner + absent + end)), RunVerdict::failed);
}

// ---- Weak passes

TEST(WeakPass, says_what_a_loopback_of_an_ath6kl_module_does_not_prove) {
    const auto run = read_run(banner +
                              "[WIFI]Chip type is = 1\n"
                              "[WIFI]Chip vendor id = 0cf3 and product id 1022\n"
                              "[WIFI]MODULE CONNECTED\n[WIFI]WIFI DRIVER READY\n"
                              "[WIFI]LOOPBACK SUCCESS\n" +
                              end);
    EXPECT_EQ(judge(run).verdict, RunVerdict::passed);
    EXPECT_THAT(weak_passes(run), ElementsAre(HasSubstr("does not show that a packet reached it")));
}

TEST(WeakPass, says_when_a_broadcom_driver_left_the_status_as_it_was_sent) {
    const std::string loopback = "[WIFI]===> Loopback Test Passed Successfully ";
    const std::string rest = "<===\n[WIFI]LOOPBACK SUCCESS\n" + end;
    EXPECT_THAT(weak_passes(read_run(banner + checks_pass + loopback + "ff" + rest)),
                ElementsAre(HasSubstr("as it was sent")));
    EXPECT_THAT(weak_passes(read_run(banner + checks_pass + loopback + "01" + rest)), IsEmpty());
}

TEST(WeakPass, says_when_a_scan_heard_nothing_or_iperf_gave_no_figure) {
    EXPECT_THAT(weak_passes(read_run(banner + checks_pass +
                                     "[WIFI]SCAN SUCCESS AND RUN IN SHIELD ROOM\n" + end)),
                ElementsAre(HasSubstr("heard nothing (1 time)")));
    const auto run = read_run(banner + checks_pass + scan_and_associate + take_address +
                              "tcp connect failed: Connection refused\nRun Iperf Successful...\n" +
                              disconnect + session_closes + end);
    EXPECT_EQ(judge(run).verdict, RunVerdict::passed);
    EXPECT_THAT(weak_passes(run), ElementsAre("iperf gave no figure (1 time; iperf found no "
                                              "server: 1) and counts as passed: no traffic was "
                                              "shown."));
}

} // namespace

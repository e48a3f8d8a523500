// SPDX-License-Identifier: Apache-2.0
// What is kept of a failure: where, when and why it was told, and how often its cause came.

#include "consoles.hpp"
#include "model/causes.hpp"
#include "reader/failure_keeper.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::ElementsAre;

const CauseCount& counted(const wivex::report::Run& run, Cause cause) {
    return run.causes.at(index_of(cause));
}

TEST(FailureOfACheck, is_kept_with_its_lines) {
    const auto run = read_run(banner +
                              "\n[WIFI]Chip type is = 2\n"
                              "[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n"
                              "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n"
                              "[WIFI]WIFI DRIVER READY\n[WIFI]SCAN SUCCESS\n" +
                              end);
    ASSERT_EQ(run.failures.size(), 1U);
    const Failure& failure = run.failures.front();
    EXPECT_EQ(failure.cause, Cause::module_absent);
    EXPECT_EQ(failure.phase, Phase::module);
    EXPECT_EQ(failure.iteration, 0U);
    EXPECT_EQ(failure.line, 10U);
    EXPECT_FALSE(failure.warning);
    EXPECT_FALSE(failure.unrecorded);
    EXPECT_FALSE(failure.concluded);
    EXPECT_EQ(failure.shown_at, 5U);
    EXPECT_THAT(failure.lines,
                ElementsAre("[WIFI]Reading Conf file: /lib/modules/wifi/wivex.cfg",
                            "[WIFI]USBFS is already Mounted", "[WIFI]USBFS is Mounted", "",
                            "[WIFI]Chip type is = 2",
                            "[WIFI]ERROR:Module not inserted. check Insmod [*].ko",
                            "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb "));
}

TEST(FailureOfAMode, is_the_first_one_told_in_an_iteration) {
    const auto run = read_run(banner + legacy_pass + checks_pass +
                              "ERROR:SCAN-FAIL\nERROR:SCAN-FAIL\n" + session_closes + end);
    ASSERT_EQ(run.failures.size(), 1U);
    EXPECT_EQ(run.failures.front().cause, Cause::scan_rejected);
    EXPECT_EQ(run.failures.front().iteration, 1U);
    EXPECT_FALSE(run.failures.front().concluded);
    EXPECT_EQ(counted(run, Cause::scan_rejected).failures, 1U);
}

TEST(FailureOfAMode, takes_its_pass_back) {
    const auto run = read_run(banner + checks_pass + scan_and_associate + take_address + traffic +
                              disconnect + "ERROR:SCAN-FAIL\n" + session_closes + end);
    EXPECT_EQ(run.failed(), 1U);
    EXPECT_EQ(run.evidence.mode_passes, 0U);
}

TEST(FailureOfAMode, counts_at_once_when_no_session_was_open) {
    const auto run = read_run(banner + checks_pass + "unable to open sockets\n" + interrupt);
    EXPECT_EQ(counted(run, Cause::session_not_open).failures, 1U);
    EXPECT_EQ(counted(run, Cause::session_not_open).unrecorded, 0U);
    EXPECT_EQ(run.failed(), 1U);
}

TEST(FailureOfAMode, is_concluded_when_no_session_could_be_opened) {
    const auto run =
        read_run(banner + checks_pass + "[WIFI]Unable to open sockets!!\n" + checks_pass + end);
    ASSERT_EQ(run.failures.size(), 1U);
    EXPECT_EQ(run.failures.front().cause, Cause::session_not_open);
    EXPECT_TRUE(run.failures.front().concluded);
    EXPECT_EQ(run.iterations.at(0).phase(Phase::session).verdict, Verdict::failed);
}

TEST(FailureOfAMode, that_is_concluded_stands_in_its_phase) {
    const auto run =
        read_run(banner + checks_pass + scan_and_associate + take_address +
                 "IPERF not set in conf. file!!\nDISABLE_NETWORK 0 \n" + session_closes + end);
    EXPECT_EQ(run.iterations.at(0).phase(Phase::disconnect).verdict, Verdict::failed);
}

TEST(Warning, is_kept_as_one) {
    const auto run =
        read_run(banner + legacy_pass + without_address + legacy_pass + without_address + end);
    ASSERT_EQ(run.failures.size(), 2U);
    EXPECT_EQ(run.failures.front().cause, Cause::dhcp_client);
    EXPECT_EQ(run.failures.front().iteration, 1U);
    EXPECT_EQ(run.failures.front().line, 46U);
    EXPECT_TRUE(run.failures.front().warning);
    EXPECT_FALSE(run.failures.front().concluded);
    EXPECT_EQ(run.failed(), 0U);
    EXPECT_EQ(run.warned, 2U);
}

TEST(CauseCount, tells_the_first_and_the_last_iteration_of_a_failure) {
    const auto run =
        read_run(banner + legacy_pass + refused + legacy_pass + refused + refused + end);
    EXPECT_EQ(counted(run, Cause::scan_rejected).failures, 3U);
    EXPECT_EQ(counted(run, Cause::scan_rejected).first_iteration, 1U);
    EXPECT_EQ(counted(run, Cause::scan_rejected).last_iteration, 4U);
}

TEST(CauseCount, tells_the_first_and_the_last_iteration_of_a_warning) {
    const auto run = read_run(banner + legacy_pass + without_address + legacy_pass +
                              without_address + without_address + end);
    EXPECT_EQ(counted(run, Cause::dhcp_client).warnings, 3U);
    EXPECT_EQ(counted(run, Cause::dhcp_client).failures, 0U);
    EXPECT_EQ(counted(run, Cause::dhcp_client).first_iteration, 1U);
    EXPECT_EQ(counted(run, Cause::dhcp_client).last_iteration, 4U);
}

TEST(CauseCount, begins_with_the_first_failure_or_warning) {
    wivex::report::Run run;
    count_failure(run, Cause::dhcp_client, 1);
    count_warning(run, Cause::dhcp_client, 3);
    count_failure(run, Cause::dhcp_client, 5);
    EXPECT_EQ(counted(run, Cause::dhcp_client).first_iteration, 1U);
    EXPECT_EQ(counted(run, Cause::dhcp_client).last_iteration, 5U);
}

Failure of_cause(std::size_t number) {
    Failure failure;
    failure.cause = static_cast<Cause>(number);
    return failure;
}

TEST(FailureKeeper, keeps_a_thousand_failures_and_a_hundred_of_a_cause) {
    FailureKeeper keeper;
    wivex::report::Run run;
    for (std::size_t cause = 1; cause <= 10; ++cause) {
        for (int i = 0; i < 101; ++i) {
            keeper.describe(run, of_cause(cause));
        }
        EXPECT_EQ(run.failures.size(), cause * 100);
    }
    EXPECT_EQ(keeper.describe(run, of_cause(11)), FailureKeeper::not_kept);
    EXPECT_EQ(run.failures.size(), 1000U);
}

TEST(FailureKeeper, adds_no_line_to_another_run) {
    FailureKeeper keeper;
    wivex::report::Run run;
    keeper.describe(run, of_cause(1));
    wivex::report::Run next;
    keeper.add_line(&next, "of the next run");
    EXPECT_TRUE(next.failures.empty());
}

TEST(FailureKeeper, shows_the_first_line_when_none_came_before) {
    FailureKeeper keeper;
    wivex::report::Run run;
    EXPECT_EQ(keeper.describe(run, of_cause(1)), 0U);
    EXPECT_EQ(run.failures.front().shown_at, 0U);
}

} // namespace

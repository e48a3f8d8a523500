// SPDX-License-Identifier: Apache-2.0
// The loopback test (-l) of the QCA combo chip, which is a private request of its driver.

#include "loopback_rehearsal.hpp"
#include "text_parts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace bench_test {
namespace {

using namespace testing;

const std::string about_to_start = "[WIFI] Loopback about to start \n";
const std::string correct_number = "[WIFI]Correct loopback ioctl command number detected...\n";
const std::string could_not_find =
    "[WIFI]Could not find loopback ioctl command number ...\n"
    "[WIFI]Not Able to find ioctl command  for loopback on wlan0 interface...\n";
const std::string no_private_ioctl = "[WIFI]No private ioctl is for wlan0 interface...\n";
const std::string driver_errors =
    "[WIFI]Sending command for loopback is successful but some error returned by driver on wlan0 "
    "interface\n"
    "[WIFI]Please check driver status...\n";

std::string command_number(const std::string& number, const std::string& index) {
    return "[WIFI]Command number for getusbcontx loopback command is " + number + " which is " +
           index + "-th private ioctl for wlan0 interface.\n";
}

std::string answered(const std::string& answer, const std::string& counts) {
    return "[WIFI]Sending loopback request using ioctl to QCA combo driver is successful...\n"
           "[WIFI]Buffer is " +
           answer + "\n" + "[WIFI]" + counts + "\n";
}

std::string table_request(const std::string& capacity, const std::string& result) {
    return "request 0x8b0d\n"
           "  iwreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** " +
           capacity + " 00*7\n  result " + result + "\n";
}

const std::string loopback_request =
    "request 0x8be5\n"
    "  iwreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** "
    "00 00 38 00*5\n"
    "  result 0\n";

void expect_pass_that_tells(const char* scenario, const std::string& text) {
    const ChipRehearsal run(scenario, {"-l"});
    EXPECT_THAT(run.diagnostics(), HasSubstr(text));
    expect_pass(run);
}

TEST(ComboLoopback, passes_with_packets_and_no_errors) {
    const ChipRehearsal run("loopback/combo-pass", {"-l"});
    EXPECT_EQ(about_to_start + command_number("56", "3") + correct_number +
                  answered("total 100 seq_err 0 content_err 0\n",
                           "total_packets [100], seq_err [0], content_err [0]") +
                  "[WIFI]Loopback Successful \n" + success,
              run.diagnostics());
    EXPECT_EQ("", run.err());
    expect_pass(run);
}

TEST(ComboLoopback, asks_for_16_entries_and_sends_the_sub_command_as_flags) {
    const ChipRehearsal run("loopback/combo-pass", {"-l"});
    EXPECT_EQ(table_request("10", "0") + loopback_request, run.driver_log());
}

TEST(ComboLoopback, passes_with_a_table_of_one_entry) {
    expect_pass_that_tells("loopback/combo-one", command_number("56", "0"));
}

TEST(ComboLoopback, fetches_a_larger_table_as_the_driver_hints) {
    const ChipRehearsal run("loopback/combo-hint", {"-l"});
    EXPECT_EQ(table_request("10", "-1 E2BIG") + table_request("28", "0") + loopback_request,
              run.driver_log());
    EXPECT_THAT(run.diagnostics(), HasSubstr(command_number("56", "20")));
    expect_pass(run);
}

TEST(ComboLoopback, doubles_the_table_without_a_hint) {
    const ChipRehearsal run("loopback/combo-doubling", {"-l"});
    EXPECT_EQ(table_request("10", "-1 E2BIG") + table_request("20", "-1 E2BIG") +
                  table_request("40", "0") + loopback_request,
              run.driver_log());
    expect_pass(run);
}

TEST(ComboLoopback, asks_once_for_a_table_that_the_driver_does_not_have) {
    const ChipRehearsal run("loopback/combo-no-table", {"-l"});
    EXPECT_EQ(table_request("10", "-1 EOPNOTSUPP"), run.driver_log());
}

TEST(ComboLoopback, fetches_up_to_999_entries) {
    expect_pass_that_tells("loopback/combo-999", command_number("56", "998"));
}

TEST(ComboLoopback, gives_up_at_a_hint_of_1000_entries) {
    const ChipRehearsal run("loopback/combo-1000-hint", {"-l"});
    EXPECT_EQ(table_request("10", "-1 E2BIG"), run.driver_log());
    EXPECT_EQ(about_to_start + no_private_ioctl + failure, run.diagnostics());
    expect_failure(run);
}

TEST(ComboLoopback, gives_up_before_doubling_to_more_than_1000_entries) {
    const ChipRehearsal run("loopback/combo-1000-doubling", {"-l"});
    EXPECT_EQ(6, times(run.driver_log(), "request 0x8b0d\n"));
    EXPECT_THAT(run.driver_log(), HasSubstr("** 00 02 00*6\n  result -1 E2BIG\n"));
    EXPECT_EQ(about_to_start + no_private_ioctl + failure, run.diagnostics());
}

TEST(ComboLoopback, reads_names_without_terminator) {
    expect_pass_that_tells("loopback/combo-unterminated", command_number("56", "2"));
}

TEST(ComboLoopback, fails_when_the_request_has_another_number) {
    const ChipRehearsal run("loopback/combo-wrong-number", {"-l"});
    EXPECT_EQ(about_to_start + command_number("57", "3") + could_not_find + failure,
              run.diagnostics());
    EXPECT_THAT(run.driver_log(), Not(HasSubstr("0x8be5")));
    expect_failure(run);
}

TEST(ComboLoopback, survives_an_answer_that_claims_to_be_longer_than_the_buffer) {
    expect_pass_that_tells("loopback/combo-long-answer",
                           "[WIFI]Buffer is total 7 seq_err 0 content_err 0\n");
}

class FailedComboLoopback : public TestWithParam<FailedLoopback> {};

TEST_P(FailedComboLoopback, is_told_and_recorded) {
    expect_failed_loopback(GetParam());
}

FailedLoopback without_request(const char* name, const char* scenario, const std::string& told) {
    return {name, scenario, about_to_start + told};
}

INSTANTIATE_TEST_SUITE_P(
    Requests, FailedComboLoopback,
    Values(without_request("empty_table", "loopback/combo-empty", no_private_ioctl),
           without_request("no_table", "loopback/combo-no-table", no_private_ioctl),
           without_request("more_entries_claimed_than_offered", "loopback/combo-claims-40",
                           command_number("0", "16") + could_not_find),
           without_request("a_negative_number_of_entries_claimed", "loopback/combo-claims-minus-1",
                           command_number("0", "16") + could_not_find),
           without_request("a_request_that_is_not_in_the_table", "loopback/combo-unknown",
                           command_number("0", "16") + could_not_find),
           without_request("no_socket", "loopback/combo-no-socket",
                           "[WIFI]Cannot create socket and gets file descriptor...\n"),
           without_request(
               "refused_request", "loopback/combo-refused",
               command_number("56", "3") + correct_number +
                   "[WIFI]Error in sending loopback ioctl to driver...\n"
                   "[WIFI]ioctl[SIOCDEVPRIVATE]: Input/output error \n"
                   "[WIFI]Not Able to send ioctl command  for loopback on wlan0 interface...\n")),
    [](const auto& loopback) { return loopback.param.name; });

FailedLoopback with_counts(const char* name, const char* scenario, const std::string& answer,
                           const std::string& counts) {
    return {name, scenario,
            about_to_start + command_number("56", "3") + correct_number + answered(answer, counts) +
                driver_errors};
}

INSTANTIATE_TEST_SUITE_P(Counts, FailedComboLoopback,
                         Values(with_counts("no_packets", "loopback/combo-nothing-sent",
                                            "total 0 seq_err 0 content_err 0",
                                            "total_packets [0], seq_err [0], content_err [0]"),
                                with_counts("sequence_error", "loopback/combo-sequence-error",
                                            "total 100 seq_err 1 content_err 0",
                                            "total_packets [100], seq_err [1], content_err [0]"),
                                with_counts("content_error", "loopback/combo-content-error",
                                            "total 100 seq_err 0 content_err 1",
                                            "total_packets [100], seq_err [0], content_err [1]"),
                                with_counts("garbage", "loopback/combo-garbage", "busy",
                                            "total_packets [0], seq_err [0], content_err [0]")),
                         [](const auto& loopback) { return loopback.param.name; });

} // namespace
} // namespace bench_test

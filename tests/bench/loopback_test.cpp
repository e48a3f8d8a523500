// SPDX-License-Identifier: Apache-2.0
// The loopback test (-l) against the simulated driver and chip.

#include "chip_rehearsal.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace bench_test;
using namespace testing;

const std::string success = "[WIFI]LOOPBACK SUCCESS\n";
const std::string failure = "[WIFI]### LOOPBACK FAIL ###\n";

void expect_pass(const ChipRehearsal& run) {
    EXPECT_EQ(0, run.status());
    EXPECT_EQ("Test case 1 passed \nTest case 2 passed \nTest case 4 passed \n", run.results());
}

void expect_failure(const ChipRehearsal& run) {
    EXPECT_EQ(0, run.status());
    EXPECT_EQ("Test case 1 passed \nTest case 2 passed \nTest case 4 fail # 1\n", run.results());
}

int count(const std::string& text, const std::string& part) {
    int times = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++times;
    }
    return times;
}

// Broadcom

const std::string set_mode_request =
    "request 0x89f0\n"
    "  ifreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 00*16\n"
    "  record 07 01 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 11 00 00 00 01 00*19\n"
    "  buffer 62 75 73 3a 6c 6f 6f 70 62 61 63 6b 00 01 00*114\n";

TEST(BroadcomLoopback, passes_with_a_status_slot_that_was_left_as_sent) {
    const ChipRehearsal run("loopback/broadcom-pass", {"-l"});
    EXPECT_EQ("[WIFI]===> Loopback Test Passed Successfully ff<===\n" + success, run.diagnostics());
    EXPECT_EQ("", run.err());
    expect_pass(run);
}

TEST(BroadcomLoopback, sets_the_mode_and_then_transfers) {
    const ChipRehearsal run("loopback/broadcom-pass", {"-l"});
    EXPECT_EQ(
        set_mode_request +
            "  result 0\n"
            "request 0x89f0\n"
            "  ifreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** "
            "00*16\n"
            "  record 03 00 00 00 00 00 00 00 ** ** ** ** ** ** ** ** 19 00 00 00 01 00 00 00 00 "
            "00 00 00 00 00 00 00 44 49 44 00*5\n"
            "  buffer 75 73 62 5f 6c 62 5f 74 78 66 65 72 00 00 04 00 00 64 00 00 00 ff ff ff ff "
            "00*103\n"
            "  result 0\n",
        run.driver_log());
}

TEST(BroadcomLoopback, sends_0_and_0_when_the_configuration_names_no_packets) {
    const ChipRehearsal run("loopback/broadcom-no-packets", {"-l"});
    EXPECT_THAT(run.driver_log(), HasSubstr("  buffer 75 73 62 5f 6c 62 5f 74 78 66 65 72 00 "
                                            "00 00 00 00 00 00 00 00 ff ff ff ff 00*103\n"));
    expect_pass(run);
}

TEST(BroadcomLoopback, tells_its_steps_with_the_debug_option) {
    const ChipRehearsal run("loopback/broadcom-pass", {"-l", "-u"});
    EXPECT_EQ("[WIFI]VID 9e0c\n"
              "[WIFI]Actual PID 20a0\n"
              "[WIFI]PIDs:\n"
              "20a0\n"
              "[WIFI]Loopback Mode set to driver\n"
              "[WIFI]===> Loopback Test Passed Successfully <===\n"
              "\n"
              "[WIFI]===> Loopback Test Passed Successfully ff<===\n" +
                  success,
              run.diagnostics());
}

TEST(BroadcomLoopback, serves_the_bd27_module_and_takes_any_status_but_0_for_a_pass) {
    const ChipRehearsal run("loopback/broadcom-bd27", {"-l"});
    EXPECT_EQ("[WIFI]===> Loopback Test Passed Successfully 80<===\n" + success, run.diagnostics());
    expect_pass(run);
}

TEST(BroadcomLoopback, fails_with_a_status_of_0) {
    const ChipRehearsal run("loopback/broadcom-lost", {"-l"});
    EXPECT_EQ("[WIFI]Loopback fail, status  0\n" + failure, run.diagnostics());
    expect_failure(run);
}

TEST(BroadcomLoopback, fails_silently_without_the_loopback_mode) {
    const ChipRehearsal run("loopback/broadcom-no-mode", {"-l"});
    EXPECT_EQ(failure, run.diagnostics());
    EXPECT_EQ(set_mode_request + "  result -1 EOPNOTSUPP\n", run.driver_log());
    expect_failure(run);
}

TEST(BroadcomLoopback, tells_of_the_missing_mode_with_the_debug_option) {
    const ChipRehearsal run("loopback/broadcom-no-mode", {"-l", "-u"});
    EXPECT_THAT(
        run.diagnostics(),
        HasSubstr("20a0\n[WIFI]##### Failed to set loopback mode to driver #####\n" + failure));
}

TEST(BroadcomLoopback, fails_when_the_transfer_is_refused) {
    const ChipRehearsal run("loopback/broadcom-no-transfer", {"-l"});
    EXPECT_EQ("[WIFI]IOCTL fail for loopback\n" + failure, run.diagnostics());
    expect_failure(run);
}

TEST(BroadcomLoopback, fails_silently_without_a_socket) {
    const ChipRehearsal run("loopback/broadcom-no-socket", {"-l"});
    EXPECT_EQ(failure, run.diagnostics());
    expect_failure(run);
}

TEST(BroadcomLoopback, tells_of_the_missing_socket_with_the_debug_option) {
    const ChipRehearsal run("loopback/broadcom-no-socket", {"-l", "-u"});
    EXPECT_THAT(run.diagnostics(), HasSubstr("[WIFI]Failed to create the socket\n" + failure));
}

TEST(BroadcomLoopback, fails_on_an_interface_of_another_driver) {
    const ChipRehearsal run("loopback/ordinary-kernel", {"-l"});
    EXPECT_EQ(failure, run.diagnostics());
    EXPECT_EQ("", run.driver_log());
    expect_failure(run);
}

// Chips without a loopback

TEST(Loopback, is_not_supported_for_the_bd1d_module) {
    const ChipRehearsal run("loopback/unsupported", {"-l"});
    EXPECT_EQ("[WIFI]LOOPBACK is not supported for this chip\n" + failure, run.diagnostics());
    EXPECT_EQ("[WIFI]Current module : vid = 0a5c,pid = bd1d\n", run.err());
    EXPECT_EQ("", run.driver_log());
    expect_failure(run);
}

TEST(Loopback, is_not_supported_without_a_module) {
    const ChipRehearsal run("loopback/no-module", {"-l"});
    EXPECT_EQ("[WIFI]LOOPBACK is not supported for this chip\n" + failure, run.diagnostics());
    EXPECT_EQ("[WIFI]Current module : vid = 9e0c,pid = \n", run.err());
    EXPECT_EQ("", run.driver_log());
}

// QCA combo

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

TEST(ComboLoopback, fetches_up_to_999_entries) {
    const ChipRehearsal run("loopback/combo-999", {"-l"});
    EXPECT_THAT(run.diagnostics(), HasSubstr(command_number("56", "998")));
    expect_pass(run);
}

TEST(ComboLoopback, gives_up_at_a_hint_of_1000_entries) {
    const ChipRehearsal run("loopback/combo-1000-hint", {"-l"});
    EXPECT_EQ(table_request("10", "-1 E2BIG"), run.driver_log());
    EXPECT_EQ(about_to_start + no_private_ioctl + failure, run.diagnostics());
    expect_failure(run);
}

TEST(ComboLoopback, gives_up_before_doubling_to_more_than_1000_entries) {
    const ChipRehearsal run("loopback/combo-1000-doubling", {"-l"});
    EXPECT_EQ(6, count(run.driver_log(), "request 0x8b0d\n"));
    EXPECT_THAT(run.driver_log(), HasSubstr("** 00 02 00*6\n  result -1 E2BIG\n"));
    EXPECT_EQ(about_to_start + no_private_ioctl + failure, run.diagnostics());
}

TEST(ComboLoopback, fails_without_private_requests) {
    for (const char* scenario : {"loopback/combo-empty", "loopback/combo-no-table"}) {
        const ChipRehearsal run(scenario, {"-l"});
        EXPECT_EQ(about_to_start + no_private_ioctl + failure, run.diagnostics());
        expect_failure(run);
    }
}

TEST(ComboLoopback, looks_at_no_more_entries_than_it_offered_when_the_driver_claims_more) {
    const ChipRehearsal more("loopback/combo-claims-40", {"-l"});
    EXPECT_EQ(about_to_start + command_number("0", "16") + could_not_find + failure,
              more.diagnostics());
    const ChipRehearsal negative("loopback/combo-claims-minus-1", {"-l"});
    EXPECT_EQ(about_to_start + command_number("0", "16") + could_not_find + failure,
              negative.diagnostics());
}

TEST(ComboLoopback, reads_names_without_terminator) {
    const ChipRehearsal run("loopback/combo-unterminated", {"-l"});
    EXPECT_THAT(run.diagnostics(), HasSubstr(command_number("56", "2")));
    expect_pass(run);
}

TEST(ComboLoopback, fails_when_the_request_has_another_number) {
    const ChipRehearsal run("loopback/combo-wrong-number", {"-l"});
    EXPECT_EQ(about_to_start + command_number("57", "3") + could_not_find + failure,
              run.diagnostics());
    EXPECT_THAT(run.driver_log(), Not(HasSubstr("0x8be5")));
    expect_failure(run);
}

TEST(ComboLoopback, takes_a_request_that_is_not_in_the_table_for_number_0) {
    const ChipRehearsal run("loopback/combo-unknown", {"-l"});
    EXPECT_EQ(about_to_start + command_number("0", "16") + could_not_find + failure,
              run.diagnostics());
    expect_failure(run);
}

TEST(ComboLoopback, fails_when_the_driver_refuses_the_request) {
    const ChipRehearsal run("loopback/combo-refused", {"-l"});
    EXPECT_EQ(about_to_start + command_number("56", "3") + correct_number +
                  "[WIFI]Error in sending loopback ioctl to driver...\n"
                  "[WIFI]ioctl[SIOCDEVPRIVATE]: Input/output error \n"
                  "[WIFI]Not Able to send ioctl command  for loopback on wlan0 interface...\n" +
                  failure,
              run.diagnostics());
    expect_failure(run);
}

struct FailedCounts {
    const char* name;
    const char* scenario;
    const char* answer;
    const char* counts;
};

class ComboLoopbackCounts : public testing::TestWithParam<FailedCounts> {};

TEST_P(ComboLoopbackCounts, fail_without_packets_or_with_errors) {
    const ChipRehearsal run(GetParam().scenario, {"-l"});
    EXPECT_EQ(about_to_start + command_number("56", "3") + correct_number +
                  answered(GetParam().answer, GetParam().counts) + driver_errors + failure,
              run.diagnostics());
    expect_failure(run);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, ComboLoopbackCounts,
    testing::Values(FailedCounts{"no_packets", "loopback/combo-nothing-sent",
                                 "total 0 seq_err 0 content_err 0",
                                 "total_packets [0], seq_err [0], content_err [0]"},
                    FailedCounts{"sequence_error", "loopback/combo-sequence-error",
                                 "total 100 seq_err 1 content_err 0",
                                 "total_packets [100], seq_err [1], content_err [0]"},
                    FailedCounts{"content_error", "loopback/combo-content-error",
                                 "total 100 seq_err 0 content_err 1",
                                 "total_packets [100], seq_err [0], content_err [1]"},
                    FailedCounts{"garbage", "loopback/combo-garbage", "busy",
                                 "total_packets [0], seq_err [0], content_err [0]"}),
    [](const auto& tested) { return tested.param.name; });

TEST(ComboLoopback, survives_an_answer_that_claims_to_be_longer_than_the_buffer) {
    const ChipRehearsal run("loopback/combo-long-answer", {"-l"});
    EXPECT_THAT(run.diagnostics(), HasSubstr("[WIFI]Buffer is total 7 seq_err 0 content_err 0\n"));
    expect_pass(run);
}

TEST(ComboLoopback, fails_without_a_socket) {
    const ChipRehearsal run("loopback/combo-no-socket", {"-l"});
    EXPECT_EQ(about_to_start + "[WIFI]Cannot create socket and gets file descriptor...\n" + failure,
              run.diagnostics());
    expect_failure(run);
}

// ath6kl

TEST(Ath6klLoopback, tells_its_steps_on_standard_error) {
    const ChipRehearsal run("loopback/ath6kl-pass", {"-l"});
    EXPECT_EQ("[WIFI]Debugfs is Mounted\n"
              "[WIFI]phy_addr is [phy0] [4]\n"
              "[WIFI]buf is [/sys/kernel/debug/ieee80211/phy0]\n"
              "[WIFI]path = /sys/kernel/debug/ieee80211/phy0\n"
              "[WIFI]echo 2 > /sys/kernel/debug/ieee80211/phy0/ath6kl/aow\n"
              "echo 3 > /sys/kernel/debug/ieee80211/phy0/ath6kl/aow\n"
              "[WIFI][QCA Wi-Fi Content Error Count]\n"
              "echo 0x40bf38 > /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_addr\n"
              "cat /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_dump\n"
              "[WIFI]buf=cat /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_dump\n"
              "[WIFI]val1=202 val2=0\n"
              "[WIFI][QCA Wi-Fi Seq Error Count]\n"
              "echo 0x40bf34 > /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_addr\n"
              "[WIFI]buf=echo 0x40bf34 > /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_addr\n"
              "[WIFI]val1=236 val2=0\n"
              "[WIFI]cat /sys/kernel/debug/ieee80211/phy0/ath6kl/reg_dump\n",
              run.err());
    expect_pass(run);
}

TEST(Ath6klLoopback, shows_the_dumps_of_both_counters_on_the_console) {
    const ChipRehearsal run("loopback/ath6kl-pass", {"-l"});
    EXPECT_EQ("0x40bf38: 0x00000000\n0x40bf34: 0x00000001\n" + success, run.diagnostics());
    EXPECT_EQ("aow 2\n"
              "aow 3\n"
              "reg_addr 0x40bf38\n"
              "reg_dump\n"
              "reg_addr 0x40bf34\n"
              "reg_dump\n",
              run.chip_log());
}

TEST(Ath6klLoopback, fails_when_debugfs_cannot_be_mounted) {
    const ChipRehearsal run("loopback/ath6kl-no-debugfs", {"-l"});
    EXPECT_THAT(run.err(), StartsWith("[WIFI][Trying to Mount Debugfs for Wi-Fi]\n"));
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]Debugfs Mount Error : Does not exist = "
                                     "/sys/kernel/debug/ieee80211\n"));
    EXPECT_EQ(failure, run.diagnostics());
    expect_failure(run);
}

TEST(Ath6klLoopback, goes_on_when_debugfs_could_be_mounted) {
    const ChipRehearsal run("loopback/ath6kl-mounts-debugfs", {"-l"});
    EXPECT_THAT(run.err(), StartsWith("[WIFI][Trying to Mount Debugfs for Wi-Fi]\n"
                                      "[WIFI]Debugfs is Mounted\n"
                                      "[WIFI]phy_addr is [phy0] [4]\n"));
    expect_pass(run);
}

TEST(Ath6klLoopback, fails_at_once_without_a_phy) {
    const ChipRehearsal run("loopback/ath6kl-no-phy", {"-l"});
    EXPECT_EQ("[WIFI]readdir_r returns NULL because either no directory left or there is no "
              "directory in dir\n" +
                  failure,
              run.diagnostics());
    EXPECT_EQ("[WIFI]Debugfs is Mounted\n[WIFI]phy_addr is NULL\n", run.err());
    expect_failure(run);
}

TEST(Ath6klLoopback, passes_a_phy_without_register_files) {
    const ChipRehearsal run("loopback/ath6kl-no-files", {"-l"});
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]val1=236 val2=0\n"));
    expect_pass(run);
}

TEST(Ath6klLoopback, cuts_the_path_of_a_phy_with_a_long_name) {
    const ChipRehearsal run("loopback/ath6kl-long-name", {"-l"});
    const std::string name = "phy" + std::string(124, 'x');
    const std::string path = ("/sys/kernel/debug/ieee80211/" + name).substr(0, 127);
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]phy_addr is [" + name +
                                     "] [127]\n"
                                     "[WIFI]buf is [" +
                                     path +
                                     "]\n"
                                     "[WIFI]path = " +
                                     path + "\n"));
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]File Error : " + path + "\n"));
    expect_failure(run);
}

TEST(Ath6klLoopback, shows_a_dump_of_any_length) {
    const ChipRehearsal run("loopback/ath6kl-long-dump", {"-l"});
    EXPECT_EQ(std::string(3000, '0') + "\n" + success, run.diagnostics());
    expect_pass(run);
}

TEST(Ath6klLoopback, fails_when_a_line_that_can_be_read_holds_an_error_count) {
    const ChipRehearsal run("loopback/ath6kl-errors-in-a-file", {"-l"});
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]buf=7 2\n\n[WIFI]val1=7 val2=2\n"));
    expect_failure(run);
}

TEST(Ath6klLoopback, takes_a_negative_count_for_no_error) {
    const ChipRehearsal run("loopback/ath6kl-negative-count", {"-l"});
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]val1=7 val2=-2147483648\n"));
    expect_pass(run);
}

TEST(Ath6klLoopback, sleeps_the_iteration_interval_after_its_last_dump) {
    const BenchRun run = Bench("loopback/ath6kl-pass").args({"-l", "-i", "3"}).run();
    // A second for the loopback to settle, the interval, and the pause between iterations.
    EXPECT_GE(run.wall_ms, 6000);
    EXPECT_LT(run.wall_ms, 7500);
}

// Termination

const std::string cleaned_up = "[WIFI]Cleanup\n"
                               "[WIFI]Set value of sigterm_var\n"
                               "[WIFI]Closing the ctrl sockets\n"
                               "[WIFI]Closing the Event sockets\n"
                               "[WIFI]Reset Value of sigterm_var\n"
                               "[WIFI] Done..\n";

BenchRun killed(const std::string& scenario) {
    return Bench(scenario).args({"-l", "-m", "100"}).signal("TERM@900ms").run();
}

void expect_loopback_switched_off(const BenchRun& run, const std::string& chip_type) {
    EXPECT_EQ(0, run.status);
    EXPECT_LT(run.wall_ms, 4000);
    EXPECT_EQ("0\n", run.files.at("parameters/usbloop_enable"));
    EXPECT_FALSE(run.result_file());
    EXPECT_THAT(run.out, EndsWith("[WIFI] Got Kill signal...\n"
                                  "[WIFI]Calling for chip --> " +
                                  chip_type +
                                  "\n"
                                  "[WIFI]Write to file "
                                  "\"/sys/module/bcmdhd/parameters/usbloop_enable\" success\n" +
                                  cleaned_up));
}

TEST(KilledLoopback, is_switched_off_while_the_driver_works_on_the_transfer) {
    const BenchRun run = killed("loopback/broadcom-slow");
    expect_loopback_switched_off(run, "5");
    EXPECT_EQ("", run.err);
}

TEST(KilledLoopback, is_switched_off_between_iterations) {
    const BenchRun run = Bench("loopback/broadcom-bd27")
                             .line("file /sys/module/bcmdhd/parameters/usbloop_enable \"1\\n\"")
                             .args({"-l", "-m", "100"})
                             .signal("TERM@900ms")
                             .run();
    expect_loopback_switched_off(run, "3");
}

TEST(KilledLoopback, tells_when_the_driver_has_no_loopback_parameter) {
    const BenchRun run = killed("loopback/broadcom-pass");
    EXPECT_EQ("[WIFI]Open error: No such file or directory\n", run.err);
    EXPECT_THAT(run.out, EndsWith("[WIFI]Calling for chip --> 5\n" + cleaned_up));
}

TEST(KilledLoopback, of_qca_chips_has_nothing_to_switch_off) {
    const BenchRun first = killed("loopback/ath6kl-pass");
    EXPECT_THAT(first.out, EndsWith("[WIFI]Calling for chip --> 1\n"
                                    "[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n" +
                                    cleaned_up));
    const BenchRun second = killed("loopback/combo-pass");
    EXPECT_THAT(second.out, EndsWith("[WIFI]Calling for chip --> 2\n"
                                     "[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n" +
                                     cleaned_up));
}

TEST(KilledLoopback, of_other_chips_and_without_a_module_does_nothing) {
    EXPECT_THAT(killed("loopback/unsupported").out,
                EndsWith("[WIFI]Calling for chip --> 4\n" + cleaned_up));
    EXPECT_THAT(killed("loopback/no-module").out,
                EndsWith("[WIFI]Calling for chip --> 0\n" + cleaned_up));
}

TEST(InterruptedLoopback, writes_the_results_while_the_driver_works_on_the_transfer) {
    const BenchRun run = Bench("loopback/broadcom-slow").args({"-l"}).signal("INT@900ms").run();
    EXPECT_LT(run.wall_ms, 4000);
    EXPECT_EQ("1\n", run.files.at("parameters/usbloop_enable"));
    EXPECT_TRUE(run.result_file());
}

// Together

TEST(Diagnostics, run_beside_the_legacy_wlan_test_in_every_iteration) {
    const BenchRun run = Bench("diagnostics-together").args({"-l", "-M", "-w", "-m", "3"}).run();
    EXPECT_EQ("Test case 1 passed \n"
              "Test case 2 passed \n"
              "Test case 3 fail # 1\n"
              "Test case 4 fail # 2\n"
              "Test case 8 passed \n",
              run.result_file());
    EXPECT_EQ(3, count(run.out, "[WIFI]Result file direcotry is /root/\n"));
    EXPECT_EQ(2, count(run.out, "[WIFI]MAC PRINT SUCCESS\n"));
    EXPECT_EQ(1, count(run.out, "[WIFI]MAC PRINT FAIL\n"));
    EXPECT_EQ(1, count(run.out, success));
    EXPECT_EQ(2, count(run.out, failure));
    EXPECT_EQ(3, count(run.out, "Command to udhcpc is successful...\n"));
}

TEST(Diagnostics, come_in_the_order_of_the_iteration) {
    const BenchRun run = Bench("diagnostics-together").faster(10).args({"-l", "-M", "-w"}).run();
    EXPECT_THAT(run.out, ContainsRegex("WIFI DRIVER READY(.|\n)*MAC PRINT SUCCESS(.|\n)*"
                                       "LOOPBACK SUCCESS(.|\n)*Scan Command Sent"));
}

} // namespace

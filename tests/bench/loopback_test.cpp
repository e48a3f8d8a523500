// SPDX-License-Identifier: Apache-2.0
// The loopback test (-l) against the simulated driver: Broadcom chips, chips without a loopback,
// and runs that are ended in the middle of it.

#include "loopback_rehearsal.hpp"
#include "text_parts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace bench_test {
namespace {

using namespace testing;

// ---- Broadcom ----------------------------------------------------------------------------------

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

TEST(BroadcomLoopback, tells_of_the_missing_socket_with_the_debug_option) {
    const ChipRehearsal run("loopback/broadcom-no-socket", {"-l", "-u"});
    EXPECT_THAT(run.diagnostics(), HasSubstr("[WIFI]Failed to create the socket\n" + failure));
}

class FailedBroadcomLoopback : public TestWithParam<FailedLoopback> {};

TEST_P(FailedBroadcomLoopback, is_told_and_recorded) {
    expect_failed_loopback(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Reasons, FailedBroadcomLoopback,
                         Values(FailedLoopback{"status_of_0", "loopback/broadcom-lost",
                                               "[WIFI]Loopback fail, status  0\n"},
                                FailedLoopback{"refused_transfer", "loopback/broadcom-no-transfer",
                                               "[WIFI]IOCTL fail for loopback\n"},
                                FailedLoopback{"no_socket_silently", "loopback/broadcom-no-socket",
                                               ""}),
                         [](const auto& loopback) { return loopback.param.name; });

// ---- drivers and chips without a loopback ------------------------------------------------------

class MissingLoopback : public TestWithParam<FailedLoopback> {};

TEST_P(MissingLoopback, is_told_and_recorded_without_a_request) {
    EXPECT_EQ("", expect_failed_loopback(GetParam()).driver_log());
}

INSTANTIATE_TEST_SUITE_P(
    Chips, MissingLoopback,
    Values(FailedLoopback{"of_another_driver_silently", "loopback/ordinary-kernel", ""},
           FailedLoopback{"of_the_bd1d_module", "loopback/unsupported",
                          "[WIFI]LOOPBACK is not supported for this chip\n",
                          "[WIFI]Current module : vid = 0a5c,pid = bd1d\n"},
           FailedLoopback{"without_a_module", "loopback/no-module",
                          "[WIFI]LOOPBACK is not supported for this chip\n",
                          "[WIFI]Current module : vid = 9e0c,pid = \n",
                          "Test case 1 fail # 1\nTest case 2 passed \nTest case 4 fail # 1\n"}),
    [](const auto& loopback) { return loopback.param.name; });

// ---- termination ------------------------------------------------------------------------------

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
                                  cleanup + done));
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
    EXPECT_THAT(run.out, EndsWith("[WIFI]Calling for chip --> 5\n" + cleanup + done));
}

TEST(KilledLoopback, of_qca_chips_has_nothing_to_switch_off) {
    const BenchRun first = killed("loopback/ath6kl-pass");
    EXPECT_THAT(first.out, EndsWith("[WIFI]Calling for chip --> 1\n"
                                    "[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n" +
                                    cleanup + done));
    const BenchRun second = killed("loopback/combo-pass");
    EXPECT_THAT(second.out, EndsWith("[WIFI]Calling for chip --> 2\n"
                                     "[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n" +
                                     cleanup + done));
}

TEST(KilledLoopback, of_other_chips_and_without_a_module_does_nothing) {
    EXPECT_THAT(killed("loopback/unsupported").out,
                EndsWith("[WIFI]Calling for chip --> 4\n" + cleanup + done));
    EXPECT_THAT(killed("loopback/no-module").out,
                EndsWith("[WIFI]Calling for chip --> 0\n" + cleanup + done));
}

TEST(InterruptedLoopback, writes_the_results_while_the_driver_works_on_the_transfer) {
    const BenchRun run = Bench("loopback/broadcom-slow").args({"-l"}).signal("INT@900ms").run();
    EXPECT_LT(run.wall_ms, 4000);
    EXPECT_EQ("1\n", run.files.at("parameters/usbloop_enable"));
    EXPECT_TRUE(run.result_file());
}

// ---- together ---------------------------------------------------------------------------------

TEST(Diagnostics, run_beside_the_legacy_wlan_test_in_every_iteration) {
    const BenchRun run = Bench("diagnostics-together").args({"-l", "-M", "-w", "-m", "3"}).run();
    EXPECT_EQ("Test case 1 passed \n"
              "Test case 2 passed \n"
              "Test case 3 fail # 1\n"
              "Test case 4 fail # 2\n"
              "Test case 8 passed \n",
              run.result_file());
    EXPECT_EQ(3, times(run.out, "[WIFI]Result file direcotry is /root/\n"));
    EXPECT_EQ(2, times(run.out, "[WIFI]MAC PRINT SUCCESS\n"));
    EXPECT_EQ(1, times(run.out, "[WIFI]MAC PRINT FAIL\n"));
    EXPECT_EQ(1, times(run.out, success));
    EXPECT_EQ(2, times(run.out, failure));
    EXPECT_EQ(3, times(run.out, "Command to udhcpc is successful...\n"));
}

TEST(Diagnostics, come_in_the_order_of_the_iteration) {
    const BenchRun run = Bench("diagnostics-together").faster(10).args({"-l", "-M", "-w"}).run();
    EXPECT_THAT(run.out, ContainsRegex("WIFI DRIVER READY(.|\n)*MAC PRINT SUCCESS(.|\n)*"
                                       "LOOPBACK SUCCESS(.|\n)*Scan Command Sent"));
}

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// The loopback test (-l) of an ath6kl chip, which goes through files of debugfs.

#include "loopback_rehearsal.hpp"
#include "text_parts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace bench_test {
namespace {

using namespace testing;

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
    EXPECT_EQ(ath6kl_steps, run.chip_log());
}

TEST(Ath6klLoopback, fails_when_debugfs_cannot_be_mounted) {
    const ChipRehearsal run("loopback/ath6kl-no-debugfs", {"-l"});
    EXPECT_THAT(run.err(), StartsWith("[WIFI][Trying to Mount Debugfs for Wi-Fi]\n"));
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]Debugfs Mount Error : Does not exist = "
                                     "/sys/kernel/debug/ieee80211\n"));
    EXPECT_EQ(failure, run.diagnostics());
    expect_failure(run);
}

TEST(Ath6klLoopback, fails_when_a_file_stands_in_the_place_of_debugfs) {
    const ChipRehearsal run("loopback/ath6kl-debugfs-is-a-file", {"-l"});
    EXPECT_THAT(run.err(), StartsWith("[WIFI][Trying to Mount Debugfs for Wi-Fi]\n"));
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
    EXPECT_EQ(1, times(run.err(), "[WIFI]File Error : " + path + "\n"));
    expect_failure(run);
}

TEST(Ath6klLoopback, ends_when_the_second_counter_cannot_be_read) {
    const ChipRehearsal run("loopback/ath6kl-vanishes", {"-l"});
    EXPECT_THAT(run.err(), HasSubstr("[WIFI]val1=7 val2=0\n"));
    EXPECT_THAT(run.err(), EndsWith("[WIFI]File Error : /sys/kernel/debug/ieee80211/phy0\n"));
    expect_failure(run);
}

TEST(Ath6klLoopback, shows_a_dump_of_any_length) {
    const ChipRehearsal run("loopback/ath6kl-long-dump", {"-l"});
    EXPECT_EQ(std::string(3000, '0') + "\n" + success, run.diagnostics());
    expect_pass(run);
}

struct ErrorCount {
    const char* name;
    const char* scenario;
    const char* told;
    bool passes;
};

void PrintTo(const ErrorCount& count, std::ostream* out) {
    *out << count.scenario;
}

class Ath6klErrorCount : public TestWithParam<ErrorCount> {};

TEST_P(Ath6klErrorCount, decides_the_loopback) {
    const ChipRehearsal run(GetParam().scenario, {"-l"});
    EXPECT_THAT(run.err(), HasSubstr(GetParam().told));
    expect_results(run, result_of(4, GetParam().passes ? 0 : 1));
}

INSTANTIATE_TEST_SUITE_P(
    Counts, Ath6klErrorCount,
    Values(ErrorCount{"is_none_without_register_files", "loopback/ath6kl-no-files",
                      "[WIFI]val1=236 val2=0\n", true},
           ErrorCount{"is_read_in_a_line_that_can_be_read", "loopback/ath6kl-errors-in-a-file",
                      "[WIFI]buf=7 2\n\n[WIFI]val1=7 val2=2\n", false},
           ErrorCount{"is_that_of_the_first_dump_alone", "loopback/ath6kl-first-count",
                      "[WIFI]buf=7 1\n\n[WIFI]val1=7 val2=1\n", false},
           ErrorCount{"is_that_of_the_second_dump_alone", "loopback/ath6kl-second-count",
                      "[WIFI]buf=8 1\n\n[WIFI]val1=8 val2=1\n", false},
           ErrorCount{"is_none_in_a_line_without_numbers", "loopback/ath6kl-no-numbers",
                      "[WIFI]buf=none\n\n[WIFI]val1=0 val2=0\n", true},
           ErrorCount{"is_none_when_it_is_negative", "loopback/ath6kl-negative-count",
                      "[WIFI]val1=7 val2=-2147483648\n", true}),
    [](const auto& count) { return count.param.name; });

TEST(Ath6klLoopback, gives_the_chip_a_second_to_settle) {
    const BenchRun run = Bench("loopback/ath6kl-pass").args({"-l"}).signal("INT@child:cat").run();
    EXPECT_THAT(run.signals_sent_ms(), ElementsAre(AllOf(Ge(1000), Lt(2000))));
}

TEST(Ath6klLoopback, sleeps_the_iteration_interval_after_its_last_dump) {
    const BenchRun run = Bench("loopback/ath6kl-pass").faster(10).args({"-l", "-i", "15"}).run();
    // A second for the loopback to settle, the interval, and the pause between iterations.
    EXPECT_THAT(run.wall_ms, AllOf(Ge(1700), Lt(3300)));
}

} // namespace
} // namespace bench_test

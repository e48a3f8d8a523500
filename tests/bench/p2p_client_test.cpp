// SPDX-License-Identifier: Apache-2.0
// P2P client test (-c) on the bench.

#include "bench_run.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace bench_test;
using namespace testing;

constexpr const char* passed = "Test case 1 passed \nTest case 2 passed \nTest case 9 passed \n";
constexpr const char* failed = "Test case 1 passed \nTest case 2 passed \nTest case 9 fail # 1\n";

TEST(P2pClient, joins_takes_an_address_and_leaves) {
    const BenchRun run = Bench().args({"-c", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.commands(), ElementsAre("STATUS", "P2P_GROUP_REMOVE wlan0", "P2P_FIND",
                                            "P2P_CONNECT 02:00:00:00:00:01 pbc join persistent",
                                            "P2P_GROUP_REMOVE wlan0"));
    EXPECT_THAT(run.out, HasSubstr("SentP2P_CONNECT 02:00:00:00:00:01 pbc join persistent"
                                   "command to wpa_supplicant:OK\n\n"
                                   "client Connected...\n"
                                   "Executing dhclient...\n"
                                   "udhcpc -i wlan0 --now.\n"
                                   "Command to udhcpc is successful...\n"
                                   "IPERF not set in conf. file!!\n"
                                   "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n"
                                   "Waiting for P2P-GROUP-REMOVED event from peer.\n"));
}

TEST(P2pClient, prints_the_status_of_wlan0_without_the_debug_option_too) {
    EXPECT_THAT(run_quickly(Bench(), "-c").out, HasSubstr("wpa_state=DISCONNECTED\n"));
}

TEST(P2pClient, runs_the_iperf_client_for_any_text_but_no) {
    const BenchRun run = run_quickly(
        Bench().set("check_iperf", "false").line("program iperf runs \"echo iperf $*\""), "-c");
    EXPECT_THAT(run.out, HasSubstr("iperf -c 192.168.49.1 -i 1\n"));
    EXPECT_THAT(run.err, HasSubstr("Run Iperf Successful...\n"));
}

TEST(P2pClient, records_nothing_without_a_peer) {
    const BenchRun run = run_quickly(Bench("p2p-peer-not-configured"), "-c");
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.err, HasSubstr("error in config file: missing target mac address\n"));
}

TEST(P2pClient, takes_any_connection_for_its_own) {
    const BenchRun run = run_quickly(
        Bench("p2p-join-never-connects")
            .line("supplicant sends \"<3>CTRL-EVENT-CONNECTED - to 0a:0b:0c:0d:0e:0f\" on "
                  "\"P2P_CONNECT*\" after 50ms"),
        "-c");
    EXPECT_EQ(run.result_file(), passed);
}

TEST(P2pClient, records_21_and_leaves_the_group_when_it_gets_no_address) {
    const BenchRun run = Bench("p2p-dhcp-fails").faster(20).args({"-c", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(), failed);
    EXPECT_THAT(run.err, HasSubstr("Fail to start udhcpc!!!\n"));
    EXPECT_EQ(run.commands().back(), "P2P_CONNECT 02:00:00:00:00:01 pbc join persistent");
}

TEST(P2pClient, pauses_10_seconds_after_a_failure) {
    const BenchRun run = Bench("p2p-find-refused").faster(20).args({"-c", "-m", "2"}).run();
    const auto commands = run.timed_commands();
    ASSERT_EQ(commands.size(), 6U);
    // 10 + 2 + 1 seconds of the tool lie between two iterations.
    EXPECT_GE(commands[3].first - commands[2].first, 600'000);
    EXPECT_EQ(run.result_file(),
              "Test case 1 passed \nTest case 2 passed \nTest case 9 fail # 2\n");
}

TEST(P2pClient, waits_for_the_removal_until_it_is_interrupted) {
    const BenchRun run =
        Bench("p2p-removal-never-told").signal("INT@6000ms").args({"-c", "-m", "1"}).run();
    EXPECT_THAT(run.out, HasSubstr("Waiting for P2P-GROUP-REMOVED event from peer.\n"
                                   "[WIFI] Got ^C."));
    EXPECT_EQ(run.status, 0);
}

TEST(P2pClient, ends_at_a_kill_without_a_result_file) {
    const BenchRun run =
        Bench("p2p-join-never-connects").signal("TERM@2500ms").args({"-c", "-m", "1"}).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_FALSE(run.result_file().has_value());
    EXPECT_THAT(run.out, HasSubstr("[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> 3\n"));
}

TEST(P2pClient, keeps_its_descriptors_bounded_over_many_iterations) {
    // Each iteration leaves a probe connection open by design; 60 iterations fit into 40
    // descriptors.
    const BenchRun run = Bench()
                             .line(quick_address)
                             .option("--limit-files", "40")
                             .faster(25)
                             .args({"-c", "-m", "60"})
                             .run();
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_EQ(run.err, "");
}

} // namespace

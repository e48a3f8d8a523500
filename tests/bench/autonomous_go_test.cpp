// SPDX-License-Identifier: Apache-2.0
// Autonomous GO test (-g) on the bench. It never ends by itself, so every run is interrupted.

#include "bench_run.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace bench_test;
using namespace testing;

// No pass and no failure but 6 is ever recorded for this mode.
constexpr const char* passed = "Test case 1 passed \nTest case 2 passed \nTest case 7 passed \n";

BenchRun owner(Bench bench, const std::string& interrupt) {
    return bench.set("p2p_iface_ip", "192.168.49.2")
        .faster(20)
        .signal(interrupt)
        .args({"-g", "-m", "1"})
        .run();
}

TEST(AutonomousGo, starts_its_group_with_the_configured_name_and_phrase) {
    const BenchRun run = owner(Bench(), "INT@1500ms");
    EXPECT_THAT(run.commands(),
                ElementsAre("P2P_GROUP_REMOVE wlan0",
                            "P2P_GROUP_ADD ssid=bench-ap passphrase=bench-pass-phrase"));
    EXPECT_THAT(run.out, HasSubstr("Failed to send P2P_GROUP_REMOVE command to wpa_supplicant"
                                   "P2P group started bench-ap \n"
                                   "ifconfig wlan0 192.168.49.2\n"
                                   "killall udhcpd;sleep 1; udhcpd /tmp/udhcpd.conf\n"));
    EXPECT_EQ(run.result_file(), passed);
}

TEST(AutonomousGo, counts_the_clients_it_serves) {
    const BenchRun run = owner(Bench("go-three-clients"), "INT@2500ms");
    EXPECT_THAT(run.out, HasSubstr("Client connected 1.\nClient connected 2.\n"
                                   "Client connected 3.\n"));
}

TEST(AutonomousGo, removes_the_group_when_a_client_never_associates_and_serves_on) {
    const BenchRun run = owner(Bench("go-client-never-associates"), "INT@4000ms");
    EXPECT_THAT(run.err, HasSubstr("Client not able to connect...continuing \n"));
    EXPECT_THAT(run.commands(),
                ElementsAre("P2P_GROUP_REMOVE wlan0",
                            "P2P_GROUP_ADD ssid=bench-ap passphrase=bench-pass-phrase", "WPS_PBC",
                            "P2P_GROUP_REMOVE wlan0", "WPS_PBC"));
    EXPECT_THAT(run.out, HasSubstr("Client connected 1.\n"));
}

TEST(AutonomousGo, serves_on_when_a_push_button_is_refused) {
    const BenchRun run = owner(Bench("go-pbc-refused"), "INT@2500ms");
    EXPECT_THAT(run.err, HasSubstr("unable to send   WPS_PBC \n"));
    EXPECT_THAT(run.out, HasSubstr("Client connected 1.\n"));
}

TEST(AutonomousGo, goes_on_waiting_when_the_supplicant_dies) {
    const BenchRun run = owner(Bench("go-session-lost"), "INT@3500ms");
    EXPECT_THAT(run.err, HasSubstr("unable to send   WPS_PBC \n"));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), passed);
}

TEST(AutonomousGo, starts_the_iperf_server_only_for_yes_in_lower_case) {
    const auto with = [](const std::string& value) {
        return owner(Bench().set("check_iperf", value).line("program iperf runs \"echo iperf $*\""),
                     "INT@1500ms")
            .out;
    };
    EXPECT_THAT(with("yes"), HasSubstr("iperf -s -i 1\n"));
    EXPECT_THAT(with("Yes"), Not(HasSubstr("iperf -s")));
    EXPECT_THAT(with("1"), Not(HasSubstr("iperf -s")));
}

TEST(AutonomousGo, ends_by_itself_without_a_record_when_the_group_is_refused) {
    const BenchRun run = Bench("go-group-refused").faster(20).args({"-g", "-m", "1"}).run();
    EXPECT_THAT(run.err, HasSubstr("unable to start p2p group bench-ap \n"));
    EXPECT_EQ(run.result_file(), passed);
}

TEST(AutonomousGo, ends_by_itself_without_a_record_when_the_group_never_starts) {
    const BenchRun run = Bench("go-group-never-starts").faster(20).args({"-g", "-m", "1"}).run();
    EXPECT_THAT(run.err, HasSubstr("Unable to get P2P-GROUP-STARTED event."
                                   "Possible reason P2P group not started\n"));
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_GE(run.wall_ms, 1400);
}

TEST(AutonomousGo, records_6_once_when_there_is_no_supplicant) {
    const BenchRun run = Bench("supplicant-absent").faster(20).args({"-g", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(),
              "Test case 1 passed \nTest case 2 passed \nTest case 7 fail # 1\n");
}

TEST(AutonomousGo, prints_the_status_of_both_interfaces_when_debugging) {
    const BenchRun run = Bench()
                             .set("p2p_iface_ip", "192.168.49.2")
                             .faster(20)
                             .signal("INT@1500ms")
                             .args({"-g", "-u", "-m", "1"})
                             .run();
    EXPECT_THAT(run.out, HasSubstr("wlan0 status bssid=02:00:00:00:01:00\n"));
    EXPECT_THAT(run.out, HasSubstr("p2p0 status bssid=02:00:00:00:01:00\n"));
    EXPECT_THAT(run.out,
                HasSubstr("P2P_GROUP_ADD ssid=bench-ap passphrase=bench-pass-phraseOK\n\n"));
}

TEST(AutonomousGo, costs_next_to_no_processor_time_while_it_serves_nobody) {
    const auto processor_ms_until = [](const std::string& interrupt) {
        return Bench()
            .set("p2p_iface_ip", "192.168.49.2")
            .signal(interrupt)
            .line("program ifconfig runs \"exit 0\"")
            .line("program udhcpd runs \"exit 0\"")
            .args({"-g", "-m", "1"})
            .run()
            .processor_ms;
    };
    const double idle = processor_ms_until("INT@5000ms");
    EXPECT_LT(processor_ms_until("INT@65000ms") - idle, 50);
}

} // namespace

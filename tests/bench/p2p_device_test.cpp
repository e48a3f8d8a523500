// SPDX-License-Identifier: Apache-2.0
// P2P device test (-d) on the bench.

#include "bench_run.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace bench_test;
using namespace testing;

constexpr const char* passed = "Test case 1 passed \nTest case 2 passed \nTest case 6 passed \n";
constexpr const char* failed = "Test case 1 passed \nTest case 2 passed \nTest case 6 fail # 1\n";

TEST(P2pDevice, becomes_the_client_takes_an_address_and_waits_for_the_removal) {
    const BenchRun run = Bench("p2p-client-role").args({"-d", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.out, HasSubstr("Failed to send P2P_GROUP_REMOVE command to wpa_supplicant"
                                   "\n---------------------------------------------------\n"
                                   "SUCCESS:P2P_FIND\n"
                                   "Sent P2P_FIND command to wpa_supplicant:OK\n\n"
                                   "MATCH FOUND!!!02:00:00:00:00:01\n"));
    EXPECT_THAT(run.out,
                HasSubstr(" seconds waiting for go negotiation request from 02:00:00:00:00:01.\n"
                          "Didnot receive a P2P-GO-NEG-REQUEST.Sending a connect request.\n"
                          "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=0\n"
                          "OK\n\n"
                          "Sent P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=0"
                          " command to wpa_supplicant:OK\n\n"
                          "[WIFI]Testing for client\n"
                          "MATCH FOUND!!!client\n"
                          "client\n"
                          "Executing dhclient...\n"
                          "udhcpc -i wlan0 --now.\n"
                          "Command to udhcpc is successful...\n"
                          "Waiting for P2P-GROUP-REMOVED event from peer.\n"));
    EXPECT_THAT(run.commands(), ElementsAre("P2P_GROUP_REMOVE wlan0", "P2P_FIND",
                                            "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=0"));
}

TEST(P2pDevice, becomes_the_owner_serves_addresses_and_removes_the_group) {
    const BenchRun run = run_quickly(Bench("p2p-owner"), "-d");
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Testing for client\n"
                                   "[WIFI]Testing for GO\n"
                                   "MATCH FOUND!!!GO\n"
                                   "GO\n"
                                   "ifconfig wlan0 192.168.49.2\n"
                                   "killall udhcpd;sleep 1; udhcpd /tmp/udhcpd.conf\n"
                                   "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n"));
    EXPECT_THAT(run.commands(), ElementsAre("P2P_GROUP_REMOVE wlan0", "P2P_FIND",
                                            "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=15",
                                            "P2P_GROUP_REMOVE wlan0"));
}

TEST(P2pDevice, pauses_30_seconds_as_owner_before_it_removes_the_group) {
    const BenchRun run = run_quickly(Bench("p2p-owner"), "-d");
    const auto commands = run.timed_commands();
    ASSERT_EQ(commands.size(), 4U);
    // 30 seconds of the tool are 1.5 seconds of the bench.
    EXPECT_GE(commands[3].first - commands[2].first, 1'400'000);
}

TEST(P2pDevice, waits_the_intent_plus_the_same_draw_in_every_iteration) {
    const BenchRun run = Bench("p2p-client-role")
                             .set("starting_go_intent", "3")
                             .line(quick_address)
                             .faster(20)
                             .args({"-d", "-m", "2"})
                             .run();
    const std::size_t first = run.out.find(" seconds waiting for");
    const std::size_t second = run.out.find(" seconds waiting for", first + 1);
    ASSERT_NE(second, std::string::npos);
    const auto number_before = [&run](std::size_t at) {
        return run.out.substr(run.out.rfind('\n', at) + 1, at - run.out.rfind('\n', at) - 1);
    };
    EXPECT_EQ(number_before(first), number_before(second));
}

TEST(P2pDevice, waits_the_draw_alone_when_the_intent_is_no_number) {
    const BenchRun with_text =
        run_quickly(Bench("p2p-find-refused").set("starting_go_intent", "x"), "-d");
    EXPECT_EQ(with_text.result_file(), failed);
    const BenchRun number =
        run_quickly(Bench("p2p-client-role").set("starting_go_intent", "0"), "-d");
    const BenchRun text =
        run_quickly(Bench("p2p-client-role").set("starting_go_intent", "xy"), "-d");
    const auto wait_line = [](const std::string& out) {
        const std::size_t end = out.find(" seconds waiting for");
        const std::size_t start = out.rfind('\n', end) + 1;
        return out.substr(start, end - start);
    };
    EXPECT_EQ(wait_line(number.out), wait_line(text.out));
}

TEST(P2pDevice, sends_the_first_two_characters_of_the_intent) {
    const BenchRun run = run_quickly(Bench().set("starting_go_intent", "7.5"), "-d");
    EXPECT_THAT(run.commands(),
                testing::Contains("P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7."));
}

TEST(P2pDevice, connects_at_once_when_the_peer_asked) {
    const BenchRun run = run_quickly(Bench("p2p-peer-asks-first"), "-d");
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.out, Not(HasSubstr("Didnot receive a P2P-GO-NEG-REQUEST")));
    EXPECT_THAT(run.out, HasSubstr("MATCH FOUND!!!02:00:00:00:00:01\nP2P_CONNECT"));
}

TEST(P2pDevice, records_nothing_without_a_peer_but_pauses) {
    const BenchRun run = run_quickly(Bench("p2p-peer-not-configured"), "-d");
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.err, HasSubstr("error in config file: missing target mac address\n"));
    EXPECT_THAT(run.commands(), ElementsAre());
    EXPECT_GE(run.wall_ms, 600);
}

TEST(P2pDevice, does_not_take_another_peer_for_its_own) {
    const BenchRun run = run_quickly(Bench("p2p-wrong-peer"), "-d");
    EXPECT_EQ(run.result_file(), failed);
    EXPECT_THAT(run.out, Not(HasSubstr("MATCH FOUND")));
}

TEST(P2pDevice, finds_a_peer_that_comes_late) {
    EXPECT_EQ(run_quickly(Bench("p2p-peer-found-late"), "-d").result_file(), passed);
}

TEST(P2pDevice, records_21_when_the_client_gets_no_address) {
    const BenchRun run = Bench("p2p-dhcp-fails").faster(20).args({"-d", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(), failed);
    EXPECT_THAT(run.err, HasSubstr("Fail to run dhclient!!!\nFail to start udhcpc!!!\n"));
}

TEST(P2pDevice, waits_for_the_removal_until_it_is_interrupted) {
    const BenchRun run = Bench("p2p-removal-never-told")
                             .set("starting_go_intent", "0")
                             .signal("INT@6000ms")
                             .args({"-d", "-m", "1"})
                             .run();
    EXPECT_THAT(run.out, HasSubstr("Waiting for P2P-GROUP-REMOVED event from peer.\n"
                                   "[WIFI] Got ^C."));
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_THAT(run.sockets(), ElementsAre());
}

TEST(P2pDevice, can_be_interrupted_while_it_searches) {
    const BenchRun run = Bench("p2p-peer-never-found")
                             .signal("INT@command:P2P_FIND+300ms")
                             .args({"-d", "-m", "1"})
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), passed);
    EXPECT_LT(run.wall_ms, 5000);
}

} // namespace

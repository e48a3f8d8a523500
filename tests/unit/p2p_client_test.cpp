// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "host_programs.hpp"
#include "made_up_clock.hpp"
#include "modes/p2p_client.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class GroupClient : public SupplicantFixture {
protected:
    void SetUp() override {
        SupplicantFixture::SetUp();
        for (const char* program : {"udhcpc", "killall", "iperf"}) {
            programs_.provide(program);
        }
        config_.p2p_target_device_mac = "02:00:00:00:00:01";
        supplicant_.event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01");
        for (const char* event : {"<3>TRL-EVENT-CONNECTED", "<3>CTRL-EVENT-CONNECTE",
                                  "<3>CTRL-EVENT-CONNECTED - Connection"}) {
            supplicant_.event_after("P2P_CONNECT 02:00:00:00:00:01 pbc join persistent", event);
        }
        for (const char* event :
             {"<3>2P-GROUP-REMOVED", "<3>P2P-GROUP-REMOVE", "<3>P2P-GROUP-REMOVED wlan5 client"}) {
            supplicant_.event_after("P2P_GROUP_REMOVE wlan5", event);
        }
    }

    HostPrograms programs_;
};

TEST_F(GroupClient, shows_4096_characters_of_the_last_answer_when_debugging) {
    run_options.debug = 1;
    supplicant_.answer("P2P_GROUP_REMOVE wlan5", {"OK\n"});
    supplicant_.answer("P2P_GROUP_REMOVE wlan5", {"OK" + std::string(4095, 'x')});
    EXPECT_EQ(p2p_client_test(config_), 0);
    EXPECT_THAT(console_.out(),
                HasSubstr("Sent P2P_GROUP_REMOVE wlan5command to wpa_supplicant:\nOK" +
                          std::string(4094, 'x') + "\nWaiting for"));
}

TEST_F(GroupClient, tells_each_step) {
    EXPECT_EQ(p2p_client_test(config_), 0);
    EXPECT_THAT(console_.out(), HasSubstr("command to wpa_supplicant:OK\n\n"
                                          "client Connected...\n"
                                          "Executing dhclient...\n"));
    EXPECT_EQ(supplicant_.commands().back(), "DETACH");
}

TEST_F(GroupClient, passes_over_events_whose_name_is_not_whole) {
    run_options.debug = 1;
    EXPECT_EQ(p2p_client_test(config_), 0);
    const std::string out = console_.out();
    EXPECT_THAT(out, HasSubstr("<3>TRL-EVENT-CONNECTED\n<3>CTRL-EVENT-CONNECTE\n"
                               "<3>CTRL-EVENT-CONNECTED - Connection\nclient Connected...\n"));
    EXPECT_THAT(out, HasSubstr("Waiting for P2P-GROUP-REMOVED event from peer.\n"
                               "<3>2P-GROUP-REMOVED\n<3>P2P-GROUP-REMOVE\n"
                               "<3>P2P-GROUP-REMOVED wlan5 client\n"));
}

TEST_F(GroupClient, rests_for_the_interval_after_a_pass) {
    run_options.iteration_interval = 1;
    const Stopwatch watch;
    EXPECT_EQ(p2p_client_test(config_), 0);
    EXPECT_GE(watch.elapsed(), milliseconds(2000));
}

TEST_F(GroupClient, returns_14_when_no_child_can_be_started_for_iperf) {
    config_.check_iperf = "yes";
    ::chmod(directory_.path().c_str(), 0777);
    ::chmod(control_path().c_str(), 0777);
    programs_.let_anybody_in();
    programs_.provide("killall", no_more_processes);
    EXPECT_EQ(until_no_more_processes([this] { return p2p_client_test(config_); }), 14);
    EXPECT_THAT(console_.err(), EndsWith("Unable to run Iperf in Client mode!!!\n"));
    EXPECT_EQ(supplicant_.commands().back(), "DETACH");
}

/// No event comes that a test does not ask for.
class LonelyGroupClient : public SupplicantFixture {};

TEST_F(LonelyGroupClient, returns_16_when_no_peer_is_configured) {
    EXPECT_EQ(p2p_client_test(config_), 16);
    EXPECT_EQ(console_.err(), "error in config file: missing target mac address\n");
    EXPECT_THAT(supplicant_.spoken(), ElementsAre());
}

TEST_F(LonelyGroupClient, returns_29_when_it_is_not_connected_in_60_seconds) {
    config_.p2p_target_device_mac = "02:00:00:00:00:01";
    supplicant_.event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01");
    const MadeUpClock clock(&supplicant_);
    EXPECT_EQ(p2p_client_test(config_), 29);
    EXPECT_THAT(clock.story(), ElementsAre("sleeps 1 s", "waits 60 s"));
}

} // namespace
} // namespace wivex

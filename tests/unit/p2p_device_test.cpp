// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "host_programs.hpp"
#include "made_up_clock.hpp"
#include "modes/p2p_device.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <initializer_list>
#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class PeerDevice : public SupplicantFixture {
protected:
    void SetUp() override {
        SupplicantFixture::SetUp();
        programs_.provide("udhcpc");
        programs_.provide("killall");
        config_.p2p_target_device_mac = "02:00:00:00:00:01";
        config_.p2p_iface_ip = "10.0.0.1";
        config_.starting_go_intent = "0";
        supplicant_.event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01");
    }

    void events_after(const char* command, std::initializer_list<const char*> events) {
        for (const char* event : events) {
            supplicant_.event_after(command, event);
        }
    }

    static constexpr const char* connect = "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=0";

    HostPrograms programs_;
};

TEST_F(PeerDevice, tells_each_step_of_a_client) {
    run_options.iteration_interval = 1;
    events_after(connect, {"<3>P2P-GROUP-STARTED wlan5 client", "<3>P2P-GROUP-REMOVED wlan5"});
    const Stopwatch watch;
    EXPECT_EQ(p2p_device_test(config_), 0);
    // A second for each of the session and the interval, two behind the removal.
    EXPECT_GE(watch.elapsed(), milliseconds(4000));
    EXPECT_EQ(console_.out(),
              std::string("Sent P2P_GROUP_REMOVE wlan5command to wpa_supplicant:\n"
                          "\n---------------------------------------------------\n"
                          "SUCCESS:P2P_FIND\n"
                          "Sent P2P_FIND command to wpa_supplicant:OK\n\n"
                          "MATCH FOUND!!!02:00:00:00:00:01\n"
                          "0 seconds waiting for go negotiation request from "
                          "02:00:00:00:00:01.\n"
                          "Didnot receive a P2P-GO-NEG-REQUEST.Sending a connect request.\n"
                          "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=0\n"
                          "OK\n\n"
                          "Sent P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=0 command to "
                          "wpa_supplicant:OK\n\n"
                          "[WIFI]Testing for client\n"
                          "MATCH FOUND!!!client\n"
                          "client\n"
                          "Executing dhclient...\n"
                          "udhcpc -i wlan5 --now.\n"
                          "Command to udhcpc is successful...\n"
                          "Waiting for P2P-GROUP-REMOVED event from peer.\n") +
                  closing_trace);
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("P2P_GROUP_REMOVE wlan5", "P2P_FIND", connect));
}

TEST_F(PeerDevice, passes_over_events_whose_name_is_not_whole) {
    run_options.debug = 1;
    config_.starting_go_intent = "9";
    events_after("P2P_FIND", {"<3>2P-GO-NEG-REQUEST 02:00:00:00:00:01",
                              "<3>P2P-GO-NEG-REQUES 02:00:00:00:00:01",
                              "<3>P2P-GO-NEG-REQUEST 02:00:00:00:00:01"});
    events_after("P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=9",
                 {"<3>2P-GROUP-STARTED client", "<3>P2P-GROUP-STARTE client",
                  "<3>P2P-GROUP-STARTED client", "<3>2P-GROUP-REMOVED", "<3>P2P-GROUP-REMOVE",
                  "<3>P2P-GROUP-REMOVED wlan5"});
    EXPECT_EQ(p2p_device_test(config_), 0);
    const std::string out = console_.out();
    EXPECT_THAT(out, HasSubstr("<3>2P-GO-NEG-REQUEST 02:00:00:00:00:01\n"
                               "<3>P2P-GO-NEG-REQUES 02:00:00:00:00:01\n"
                               "<3>P2P-GO-NEG-REQUEST 02:00:00:00:00:01\n"));
    EXPECT_THAT(out, HasSubstr("<3>2P-GROUP-STARTED client\n<3>P2P-GROUP-STARTE client\n"
                               "<3>P2P-GROUP-STARTED client\n[WIFI]Testing for client\n"));
    EXPECT_THAT(out, HasSubstr("Waiting for P2P-GROUP-REMOVED event from peer.\n"
                               "<3>2P-GROUP-REMOVED\n<3>P2P-GROUP-REMOVE\n"
                               "<3>P2P-GROUP-REMOVED wlan5\n"));
}

TEST_F(PeerDevice, returns_12_when_the_owner_cannot_serve_addresses) {
    ::chmod(directory_.path().c_str(), 0777);
    ::chmod(control_path().c_str(), 0777);
    events_after(connect, {"<3>P2P-GROUP-STARTED wlan5 other", "<3>P2P-GROUP-STARTED wlan5 GO"});
    EXPECT_EQ(without_processes([this] { return p2p_device_test(config_); }), 12);
    EXPECT_THAT(console_.out(), HasSubstr("[WIFI]Testing for client\n[WIFI]Testing for GO\n"
                                          "[WIFI]Testing for client\n[WIFI]Testing for GO\n"
                                          "MATCH FOUND!!!GO\n"
                                          "GO\n"
                                          "ifconfig wlan5 10.0.0.1\n"));
    EXPECT_EQ(console_.err(), "Unable to assign ip to wlan5 \n");
}

TEST_F(PeerDevice, ends_the_group_that_it_owns_behind_30_seconds) {
    events_after(connect, {"<3>P2P-GROUP-STARTED wlan5 GO"});
    for (const char* program : {"ifconfig", "udhcpd"}) {
        programs_.provide(program);
    }
    run_options.iteration_interval = 7;
    const MadeUpClock clock(&supplicant_);
    EXPECT_EQ(p2p_device_test(config_), 0);
    // A second for the session, two for an old group, two behind the removal, then the interval.
    EXPECT_THAT(clock.story(),
                ElementsAre("sleeps 1 s", "sleeps 2 s", "waits 30 s", "sleeps 2 s", "sleeps 7 s"));
}

TEST_F(PeerDevice, returns_16_when_none_is_configured) {
    config_.p2p_target_device_mac.clear();
    EXPECT_EQ(p2p_device_test(config_), 16);
    EXPECT_EQ(console_.err(), "error in config file: missing target mac address\n");
    EXPECT_THAT(supplicant_.spoken(), ElementsAre());
}

TEST_F(PeerDevice, returns_10_when_no_group_starts_in_30_seconds) {
    const MadeUpClock clock(&supplicant_);
    EXPECT_EQ(p2p_device_test(config_), 10);
    EXPECT_EQ(console_.err(), "Unable to recieve P2P-GROUP-STARTED event.\n");
    EXPECT_THAT(clock.story(), ElementsAre("sleeps 1 s", "sleeps 2 s", "waits 30 s"));
}

} // namespace
} // namespace wivex

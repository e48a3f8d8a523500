// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "host_programs.hpp"
#include "made_up_clock.hpp"
#include "modes/autonomous_go.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <string>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class GroupOwner : public SupplicantFixture {
protected:
    void SetUp() override {
        SupplicantFixture::SetUp();
        for (const char* program : {"ifconfig", "killall", "sleep", "udhcpd", "iperf"}) {
            programs_.provide(program);
        }
        programs_.let_anybody_in();
        ::chmod(directory_.path().c_str(), 0777);
        ::chmod(control_path().c_str(), 0777);
        config_.go_ssid = "home";
        config_.go_passphrase = "secret";
        config_.p2p_iface_ip = "10.0.0.1";
        for (const char* event :
             {"<3>2P-GROUP-STARTED", "<3>P2P-GROUP-STARTE", "<3>P2P-GROUP-STARTED wlan5 GO"}) {
            supplicant_.event_after(add, event);
        }
    }

    /// The end of the mode when `program` is the last that can be started.
    int end_behind(const char* program) {
        programs_.provide(program, no_more_processes);
        return until_no_more_processes([this] { return autonomous_go_test(config_); });
    }

    static constexpr const char* add = "P2P_GROUP_ADD ssid=home passphrase=secret";

    HostPrograms programs_;
};

TEST_F(GroupOwner, returns_12_when_the_dhcp_server_cannot_be_started) {
    EXPECT_EQ(end_behind("ifconfig"), 12);
    EXPECT_EQ(console_.err(), "Unable to start dhcpd\n");
    EXPECT_THAT(supplicant_.commands(),
                ElementsAre("ATTACH", "P2P_GROUP_REMOVE wlan5", add, "DETACH"));
}

TEST_F(GroupOwner, returns_13_when_the_iperf_server_cannot_be_started) {
    config_.check_iperf = "yes";
    EXPECT_EQ(end_behind("udhcpd"), 13);
    EXPECT_EQ(console_.err(), "Unable to start iperf server.\n");
}

TEST_F(GroupOwner, shows_32_characters_of_the_answer_when_debugging) {
    run_options.debug = 1;
    supplicant_.answer(add, {"OK 3456789 123456789 123456789 123456789\n"});
    EXPECT_EQ(end_behind("ifconfig"), 12);
    EXPECT_THAT(console_.out(), HasSubstr("P2P_GROUP_ADD ssid=home passphrase=secret"
                                          "OK 3456789 123456789 123456789 1\n"
                                          "<3>2P-GROUP-STARTED\n"));
}

TEST_F(GroupOwner, asks_for_no_status_without_debugging) {
    EXPECT_EQ(end_behind("ifconfig"), 12);
    EXPECT_THAT(console_.out(), StartsWith("Sent P2P_GROUP_REMOVE wlan5command to wpa_supplicant:\n"
                                           "P2P group started home \n"));
}

/// The mode in a process of its own, in which it serves until the test ends.
class ServingGroupOwner : public GroupOwner {
protected:
    void SetUp() override {
        GroupOwner::SetUp();
        for (const char* event : {"<3>2P-PROV-DISC-PBC-REQ", "<3>P2P-PROV-DISC-PBC-RE", request}) {
            supplicant_.event_after(add, event);
        }
        for (const char* event : {"<3>P-STA-CONNECTED", "<3>AP-STA-CONNECTE",
                                  "<3>AP-STA-CONNECTED 02:00:00:00:00:02"}) {
            supplicant_.event_after("WPS_PBC", event);
        }
    }

    void TearDown() override {
        if (mode_ > 0) {
            ::kill(mode_, SIGKILL);
            ::waitpid(mode_, nullptr, 0);
        }
        GroupOwner::TearDown();
    }

    void start() {
        mode_ = fork_child([this] {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            return autonomous_go_test(config_);
        });
    }

    /// Waits until standard output holds `text`. False when that takes longer than 20 seconds.
    bool shows(const std::string& text) {
        for (const Stopwatch watch; watch.elapsed() < milliseconds(20000);) {
            out_ += console_.out();
            if (out_.find(text) != std::string::npos) {
                return true;
            }
            std::this_thread::sleep_for(milliseconds(5));
        }
        return false;
    }

    static constexpr const char* request = "<3>P2P-PROV-DISC-PBC-REQ 02:00:00:00:00:02";

    std::string out_;

private:
    pid_t mode_ = -1;
};

TEST_F(ServingGroupOwner, counts_the_stations_that_connected) {
    start();
    EXPECT_TRUE(shows("P2P group started home \n"));
    EXPECT_TRUE(shows("\nClient connected 1.\n"));
    supplicant_.send_event(request);
    EXPECT_TRUE(shows("\nClient connected 2.\n"));
    EXPECT_EQ(console_.err(), "");
}

TEST_F(ServingGroupOwner, goes_on_when_the_push_button_is_refused) {
    run_options.debug = 1;
    supplicant_.answer("WPS_PBC", {"FAIL\n"});
    supplicant_.answer("WPS_PBC", {"OK\n"});
    start();
    EXPECT_TRUE(shows("<3>AP-STA-CONNECTED 02:00:00:00:00:02\n"));
    supplicant_.send_event(request);
    EXPECT_TRUE(shows("Client connected 1.\n"));
    const std::size_t second = out_.find(request, out_.find(request) + 1);
    EXPECT_LT(second, out_.find("Client connected"));
    EXPECT_THAT(console_.err(), EndsWith(".\nunable to send   WPS_PBC \n"));
}

TEST_F(ServingGroupOwner, passes_over_events_whose_name_is_not_whole) {
    run_options.debug = 1;
    start();
    EXPECT_TRUE(shows(
        "<3>2P-GROUP-STARTED\n<3>P2P-GROUP-STARTE\n<3>P2P-GROUP-STARTED wlan5 GO\nP2P group "));
    EXPECT_TRUE(
        shows("<3>2P-PROV-DISC-PBC-REQ\n<3>P2P-PROV-DISC-PBC-RE\n<3>P2P-PROV-DISC-PBC-REQ 02:"));
    EXPECT_TRUE(shows("<3>P-STA-CONNECTED\n<3>AP-STA-CONNECTE\n<3>AP-STA-CONNECTED "
                      "02:00:00:00:00:02\nClient connected 1.\n"));
}

TEST_F(ServingGroupOwner, starts_the_iperf_server_for_yes) {
    config_.check_iperf = "yes";
    start();
    EXPECT_TRUE(shows("Client connected 1.\n"));
    // It starts in the background.
    for (const Stopwatch watch; watch.elapsed() < milliseconds(20000);) {
        if (programs_.calls().find("iperf -s -i 1\n") != std::string::npos) {
            return;
        }
        std::this_thread::sleep_for(milliseconds(5));
    }
    FAIL() << programs_.calls();
}

TEST_F(ServingGroupOwner, starts_no_iperf_server_for_another_word) {
    config_.check_iperf = "Yes";
    start();
    EXPECT_TRUE(shows("Client connected 1.\n"));
    EXPECT_THAT(programs_.calls(), Not(HasSubstr("iperf")));
}

TEST_F(ServingGroupOwner, shows_the_status_of_both_interfaces_when_debugging) {
    run_options.debug = 1;
    FakeSupplicant station(directory_ / "wlan0");
    FakeSupplicant device(directory_ / "p2p0");
    station.answer("STATUS", {"OK of the station\n"});
    device.answer("STATUS", {"OK of the device\n"});
    start();
    EXPECT_TRUE(shows("wlan0 status OK of the station\n\n"));
    EXPECT_TRUE(shows("p2p0 status OK of the device\n\n"));
}

/// No event comes that a test does not ask for.
class LonelyGroupOwner : public SupplicantFixture {};

TEST_F(LonelyGroupOwner, returns_10_when_the_group_does_not_start_in_30_seconds) {
    const MadeUpClock clock(&supplicant_);
    EXPECT_EQ(autonomous_go_test(config_), 10);
    EXPECT_THAT(clock.story(), ElementsAre("sleeps 1 s", "waits 30 s"));
}

TEST_F(LonelyGroupOwner, gives_a_station_30_seconds_and_waits_for_the_next_request) {
    HostPrograms programs;
    for (const char* program : {"ifconfig", "killall", "udhcpd"}) {
        programs.provide(program);
    }
    supplicant_.event_after("P2P_GROUP_ADD ssid= passphrase=", "<3>P2P-GROUP-STARTED wlan5 GO");
    supplicant_.event_after("P2P_GROUP_ADD ssid= passphrase=", "<3>P2P-PROV-DISC-PBC-REQ 02:00");
    const MadeUpClock clock(&supplicant_);
    EXPECT_THROW(autonomous_go_test(config_), EndlessWait);
    EXPECT_THAT(clock.story(),
                ElementsAre("sleeps 1 s", "waits 30 s", "sleeps 1 s", "waits 1000 s"));
}

} // namespace
} // namespace wivex

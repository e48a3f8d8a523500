// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "common/process_state.hpp"
#include "legacy_console.hpp"
#include "legacy_wlan_fixture.hpp"
#include "modes/legacy_wlan.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

const auto [scanned, listed, added, configured, selected, addressed, unmeasured] =
    test_texts::legacy_console("home");
const std::string disabled =
    unmeasured + "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n";

class LegacyWlan : public LegacyWlanFixture {
protected:
    void SetUp() override {
        LegacyWlanFixture::SetUp();
        start_supplicant();
    }

    void expect_end(ErrorCode code, const std::string& out, const std::string& err) {
        EXPECT_EQ(legacy_wlan_test(config_), code);
        EXPECT_EQ(console_.out(), out + closing_trace);
        EXPECT_EQ(console_.err(), err);
        EXPECT_EQ(command_connection, nullptr);
        EXPECT_EQ(event_connection, nullptr);
        EXPECT_EQ(supplicant_->commands().back(), "DETACH");
    }
};

TEST_F(LegacyWlan, passes_from_scan_to_disconnect) {
    expect_end(0, disabled, "");
    EXPECT_THAT(supplicant_->commands(),
                ElementsAre("ATTACH", "SCAN", "SCAN_RESULTS", "REMOVE_NETWORK all", "ADD_NETWORK",
                            "SET_NETWORK 0 ssid \"home\"", "SET_NETWORK 0 auth_alg OPEN",
                            "SET_NETWORK 0 proto RSN", "SET_NETWORK 0 key_mgmt WPA-PSK",
                            "SET_NETWORK 0 pairwise CCMP", "SET_NETWORK 0 psk \"secret\"",
                            "SELECT_NETWORK 0 ", "DISABLE_NETWORK 0 ", "DETACH"));
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\n");
}

TEST_F(LegacyWlan, records_nothing_itself) {
    legacy_wlan_test(config_);
    for (const auto& result : run_options.results) {
        EXPECT_TRUE(result.failures.empty());
    }
}

TEST_F(LegacyWlan, rests_for_the_interval_after_a_pass) {
    run_options.iteration_interval = 2;
    const Stopwatch watch;
    expect_end(0, disabled, "");
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(2900)), Le(milliseconds(4500))));
}

TEST_F(LegacyWlan, does_not_rest_after_a_failure) {
    run_options.iteration_interval = 5;
    supplicant_->answer("DISABLE_NETWORK 0 ", {"FAIL\n"});
    const Stopwatch watch;
    EXPECT_EQ(legacy_wlan_test(config_), 22);
    EXPECT_LT(watch.elapsed(), milliseconds(5000));
}

TEST_F(LegacyWlan, returns_6_without_a_supplicant) {
    supplicant_->die();
    EXPECT_EQ(legacy_wlan_test(config_), 6);
    EXPECT_THAT(console_.streams(),
                Pair("[WIFI]Unable to open sockets!!\n", "unable to open sockets\n"));
}

TEST_F(LegacyWlan, returns_6_when_the_supplicant_refuses_the_event_connection) {
    supplicant_->answer("ATTACH", {"FAIL\n"});
    EXPECT_EQ(legacy_wlan_test(config_), 6);
    EXPECT_EQ(console_.out(),
              std::string("[WIFI]Unable to attach event socket!!\n") + closing_trace);
    EXPECT_EQ(console_.err(), "unable to open sockets\n");
}

TEST_F(LegacyWlan, returns_8_when_the_scan_is_refused) {
    supplicant_->answer("SCAN", {"FAIL\n"});
    expect_end(8, "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n",
               "Scan Command not successful\n");
}

TEST_F(LegacyWlan, returns_24_when_the_scan_is_refused_after_three_busy_replies) {
    for (const char* reply : {"FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL\n"}) {
        supplicant_->answer("SCAN", {reply});
    }
    expect_end(24, "Fail to send Scan Command!!!\nERROR:SCAN FAIL-BUSY\n",
               "Scan returning FAIL-BUSY");
}

TEST_F(LegacyWlan, returns_9_when_the_network_is_not_listed) {
    config_.go_ssid = "away";
    expect_end(9, scanned + "awayis not found!!!\nFail to send Scan_Results Command!!!\n", "");
}

TEST_F(LegacyWlan, returns_9_when_the_listing_is_refused) {
    start_supplicant("FAIL\n");
    expect_end(9, scanned + "homeis not found!!!\nFail to send Scan_Results Command!!!\n",
               "scan_results Command not successful\n");
}

class LegacyWlanNetwork : public LegacyWlan {
protected:
    void add_network_answers(const char* reply) {
        start_supplicant("bssid\n02:01\t2412\t-40\t[ESS]\thome\n", reply);
    }
};

TEST_F(LegacyWlanNetwork, returns_9_when_no_network_can_be_added) {
    add_network_answers("FAIL\n");
    expect_end(9, listed + "ERROR:ADD_NETWORK COMMAND FAILED\n",
               "ADD_NETWORK Command not successful\n");
}

TEST_F(LegacyWlanNetwork, returns_9_when_the_network_id_is_a_bare_0) {
    add_network_answers("0");
    expect_end(9, listed + "ERROR:ADD_NETWORK COMMAND FAILED\n", "Fail to receive Network Id\n");
}

TEST_F(LegacyWlanNetwork, says_more_of_a_network_that_cannot_be_added_with_debug) {
    run_options.debug = 1;
    add_network_answers("FAIL\n");
    EXPECT_EQ(legacy_wlan_test(config_), 9);
    EXPECT_THAT(console_.out(), EndsWith("Fail to send Command ADD_NETWORK!!!\n\nERROR:ADD_NETWORK "
                                         "COMMAND FAILED\n" +
                                         std::string(closing_trace)));
}

TEST_F(LegacyWlan, returns_19_when_a_setting_is_refused) {
    supplicant_->answer("SET_NETWORK 0 proto RSN", {"FAIL\n"});
    expect_end(19,
               added + "Result of cmd_to_setnetwork function is 19\n"
                       "ERROR:SET_NETWORK COMMAND FAILED\n",
               "SET_NETWORK Command for proto is not successful\n");
}

TEST_F(LegacyWlan, returns_19_when_the_selection_is_refused) {
    supplicant_->answer("SELECT_NETWORK 0 ", {"FAIL\n"});
    expect_end(19,
               configured + "Fail to send Command SELECT_NETWORK !!!\n"
                            "ERROR:SELECT_NETWORK COMMAND FAILED\n",
               "SELECT_NETWORK Command is  not successful\n");
}

TEST_F(LegacyWlan, goes_on_after_a_dhcp_failure) {
    programs_.provide("udhcpc", "exit 1");
    expect_end(0,
               selected + "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                          "ERROR:UDHCHPC START FAILED\nIPERF not set in conf. file!!\n"
                          "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n",
               "Fail to run dhclient!!!\nFail to start udhcpc!!!\n");
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan0 --now\n");
}

TEST_F(LegacyWlan, measures_no_traffic_when_told_no) {
    config_.check_iperf = "no";
    expect_end(0, disabled, "");
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\n");
}

class TrafficWord : public LegacyWlan, public WithParamInterface<const char*> {};

TEST_P(TrafficWord, measures_traffic) {
    config_.check_iperf = GetParam();
    expect_end(0, addressed + "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n",
               "Run Iperf Successful...\n");
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\niperf -c 10.0.0.1 -i 1\n");
}

INSTANTIATE_TEST_SUITE_P(Words, TrafficWord, Values("yes", "0", "false", "NO", "no "),
                         [](const auto& word) { return "word_" + std::to_string(word.index); });

TEST_F(LegacyWlan, does_not_ask_what_iperf_said) {
    config_.check_iperf = "yes";
    programs_.provide("iperf", "exit 1");
    expect_end(0, addressed + "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n",
               "Run Iperf Successful...\n");
}

TEST_F(LegacyWlan, returns_14_when_no_child_can_be_started_for_iperf) {
    config_.check_iperf = "yes";
    let_anybody_in();
    EXPECT_EQ(without_processes([this] { return legacy_wlan_test(config_); }), 14);
    EXPECT_EQ(console_.out(), selected +
                                  "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                                  "ERROR:UDHCHPC START FAILED\n" +
                                  closing_trace);
    EXPECT_EQ(console_.err(), "Fail to run dhclient!!!\nFail to start udhcpc!!!\n"
                              "Unable to run Iperf in Client mode!!!\n");
    EXPECT_EQ(supplicant_->commands().back(), "DETACH");
}

TEST_F(LegacyWlan, returns_22_when_the_disabling_is_refused) {
    supplicant_->answer("DISABLE_NETWORK 0 ", {"FAIL\n"});
    expect_end(22, unmeasured + "DISABLE_NETWORK 0 \n",
               "DISABLE_NETWORK Command is  not successful\n"
               "Fail to send command DISABLE_NETWORK!!!\n");
}

} // namespace
} // namespace wivex

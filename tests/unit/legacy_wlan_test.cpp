// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "console_capture.hpp"
#include "fake_supplicant.hpp"
#include "modes/legacy_wlan.hpp"
#include "scratch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>

namespace wivex {
namespace {

using std::chrono::milliseconds;
using test_support::ConsoleCapture;
using test_support::FakeSupplicant;
using test_support::ScratchDirectory;
using test_support::Stopwatch;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::Le;

constexpr const char* closed =
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";

const std::string scanned = "Scan Command Sent Successfully...\n";
const std::string listed = scanned + "homeis found...\nScan_Results Command Sent Successfully...\n";
const std::string added = listed + "Call to ADD_NETWORK is Successful...\n";
const std::string configured = added + "Result of cmd_to_setnetwork function is 0\n";
const std::string selected = configured + "Call to SELECT_NETWORK is Successful...\n";
const std::string addressed = selected + "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                                         "Command to udhcpc is successful...\n";
const std::string unmeasured = addressed + "IPERF not set in conf. file!!\n";
const std::string disabled =
    unmeasured + "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n";

class LegacyWlan : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        test_support::use_private_tmp();
    }

    void SetUp() override {
        test_support::reset_process_state();
        old_path_ = ::getenv("PATH");
        ::setenv("PATH", directory_.path().c_str(), 1);
        provide("udhcpc");
        provide("killall");
        provide("iperf");
        config_.ctrl_iface = directory_.path();
        config_.interface_name = "wlan0";
        config_.go_ssid = "home";
        config_.go_passphrase = "secret";
        config_.p2p_iface_ip = "10.0.0.1";
        supplicant_ = std::make_unique<FakeSupplicant>(directory_ / "wlan0");
        supplicant_->event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ");
        supplicant_->answer("SCAN_RESULTS",
                            {"bssid / frequency / signal level / flags / ssid\n"
                             "02:00:00:00:00:01\t2412\t-40\t[WPA2-PSK-CCMP][ESS]\thome\n"});
        supplicant_->answer("ADD_NETWORK", {"0\n"});
        supplicant_->event_after("SELECT_NETWORK 0 ", "<3>CTRL-EVENT-CONNECTED - Connection");
        supplicant_->event_after("DISABLE_NETWORK 0 ", "<3>CTRL-EVENT-DISCONNECTED bssid=02:00");
    }

    void TearDown() override {
        ::setenv("PATH", old_path_.c_str(), 1);
        test_support::reset_process_state();
    }

    void provide(const std::string& tool, const std::string& behaviour = "exit 0") const {
        directory_.program(tool, "#!/bin/sh\necho \"" + tool + " $*\" >>" + (directory_ / "log") +
                                     "\n" + behaviour + "\n");
    }

    std::string calls() const {
        return test_support::read_file(directory_ / "log");
    }

    void expect_end(ErrorCode code, const std::string& out, const std::string& err) {
        EXPECT_EQ(legacy_wlan_test(config_), code);
        EXPECT_EQ(console_.out(), out + closed);
        EXPECT_EQ(console_.err(), err);
        EXPECT_EQ(command_connection, nullptr);
        EXPECT_EQ(event_connection, nullptr);
        EXPECT_EQ(supplicant_->commands().back(), "DETACH");
    }

    ScratchDirectory directory_;
    ConsoleCapture console_;
    std::unique_ptr<FakeSupplicant> supplicant_;
    RunConfig config_;

private:
    std::string old_path_;
};

TEST_F(LegacyWlan, passes_from_scan_to_disconnect) {
    expect_end(0, disabled, "");
    EXPECT_THAT(supplicant_->commands(),
                ElementsAre("ATTACH", "SCAN", "SCAN_RESULTS", "REMOVE_NETWORK all", "ADD_NETWORK",
                            "SET_NETWORK 0 ssid \"home\"", "SET_NETWORK 0 auth_alg OPEN",
                            "SET_NETWORK 0 proto RSN", "SET_NETWORK 0 key_mgmt WPA-PSK",
                            "SET_NETWORK 0 pairwise CCMP", "SET_NETWORK 0 psk \"secret\"",
                            "SELECT_NETWORK 0 ", "DISABLE_NETWORK 0 ", "DETACH"));
    EXPECT_EQ(calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\n");
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
    EXPECT_EQ(console_.out(), "[WIFI]Unable to open sockets!!\n");
    EXPECT_EQ(console_.err(), "unable to open sockets\n");
}

TEST_F(LegacyWlan, returns_6_when_the_supplicant_refuses_the_event_connection) {
    supplicant_->answer("ATTACH", {"FAIL\n"});
    EXPECT_EQ(legacy_wlan_test(config_), 6);
    EXPECT_EQ(console_.out(), std::string("[WIFI]Unable to attach event socket!!\n") + closed);
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
    supplicant_ = nullptr;
    supplicant_ = std::make_unique<FakeSupplicant>(directory_ / "wlan0");
    supplicant_->event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ");
    supplicant_->answer("SCAN_RESULTS", {"FAIL\n"});
    expect_end(9, scanned + "homeis not found!!!\nFail to send Scan_Results Command!!!\n",
               "scan_results Command not successful\n");
}

class LegacyWlanNetwork : public LegacyWlan {
protected:
    void add_network_answers(const char* reply) {
        supplicant_ = nullptr;
        supplicant_ = std::make_unique<FakeSupplicant>(directory_ / "wlan0");
        supplicant_->event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ");
        supplicant_->answer("SCAN_RESULTS", {"bssid\n02:01\t2412\t-40\t[ESS]\thome\n"});
        supplicant_->answer("ADD_NETWORK", {reply});
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
    EXPECT_THAT(console_.out(),
                ::testing::EndsWith("Fail to send Command ADD_NETWORK!!!\n\nERROR:ADD_NETWORK "
                                    "COMMAND FAILED\n" +
                                    std::string(closed)));
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
    provide("udhcpc", "exit 1");
    expect_end(0,
               selected + "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                          "ERROR:UDHCHPC START FAILED\nIPERF not set in conf. file!!\n"
                          "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n",
               "Fail to run dhclient!!!\nFail to start udhcpc!!!\n");
    EXPECT_EQ(calls(), "udhcpc -i wlan0 --now\n");
}

TEST_F(LegacyWlan, measures_no_traffic_when_told_no) {
    config_.check_iperf = "no";
    expect_end(0, disabled, "");
    EXPECT_EQ(calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\n");
}

class TrafficWord : public LegacyWlan, public ::testing::WithParamInterface<const char*> {};

TEST_P(TrafficWord, measures_traffic) {
    config_.check_iperf = GetParam();
    expect_end(0, addressed + "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n",
               "Run Iperf Successful...\n");
    EXPECT_EQ(calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\niperf -c 10.0.0.1 -i 1\n");
}

INSTANTIATE_TEST_SUITE_P(Words, TrafficWord, ::testing::Values("yes", "0", "false", "NO", "no "),
                         [](const auto& word) { return "word_" + std::to_string(word.index); });

TEST_F(LegacyWlan, does_not_ask_what_iperf_said) {
    config_.check_iperf = "yes";
    provide("iperf", "exit 1");
    expect_end(0, addressed + "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n",
               "Run Iperf Successful...\n");
}

TEST_F(LegacyWlan, returns_14_when_no_child_can_be_started_for_iperf) {
    config_.check_iperf = "yes";
    ::chmod(directory_.path().c_str(), 0777);
    ::chmod((directory_ / "wlan0").c_str(), 0777);
    const int child = test_support::fork_child([this] {
        const rlimit none{0, 0};
        ::setrlimit(RLIMIT_NPROC, &none);
        if (::geteuid() == 0 && ::setuid(65534) != 0) {
            return 100;
        }
        return legacy_wlan_test(config_);
    });
    EXPECT_EQ(test_support::end_of_child(child, milliseconds(8000)), 14);
    EXPECT_EQ(console_.out(), selected +
                                  "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                                  "ERROR:UDHCHPC START FAILED\n" +
                                  closed);
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

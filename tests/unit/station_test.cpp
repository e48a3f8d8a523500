// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "ops/station.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace wivex {
namespace {

using std::chrono::milliseconds;
using namespace test_support;
using namespace testing;

class Station : public SessionFixture {};

// ---- without a session -------------------------------------------------------------------------

TEST_F(Station, refuses_to_work_on_a_session_that_is_not_open) {
    session_->close();
    console_.out();
    EXPECT_EQ(cmd_to_scan(*session_), 6);
    EXPECT_EQ(console_.err(), "Sockets are not opened\n");
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 6);
    EXPECT_EQ(console_.err(), "Sockets are not opened\n");
    EXPECT_EQ(cmd_to_addnetwork(*session_), 6);
    EXPECT_EQ(console_.err(), "Sockets are not opened\n");
    EXPECT_EQ(cmd_to_setnetwork(*session_, config_, 0), 6);
    EXPECT_EQ(console_.err(), "Sockets are not opened\n");
    EXPECT_EQ(cmd_to_selectnetwork(*session_, 0), 6);
    EXPECT_EQ(console_.err(), "Sockets are not opened\n");
    EXPECT_EQ(cmd_to_disablenetwork(*session_, 0), 6);
    EXPECT_EQ(console_.err(), "Sockets are not opened\n");
    EXPECT_EQ(console_.out(), "");
}

TEST_F(Station, asks_for_no_listing_on_a_session_that_is_not_open_and_says_nothing) {
    session_->close();
    console_.out();
    std::string listing;
    EXPECT_FALSE(cmd_to_scan_results(*session_, listing));
    EXPECT_EQ(listing, "");
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

// ---- scan --------------------------------------------------------------------------------------

TEST_F(Station, scans_and_waits_for_the_results) {
    supplicant_.event_after("SCAN", "<3>CTRL-EVENT-SCAN-STARTED ");
    supplicant_.event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ", milliseconds(700));
    const Stopwatch watch;
    EXPECT_EQ(cmd_to_scan(*session_), 0);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(690)), Le(milliseconds(1690))));
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SCAN"));
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, asks_a_busy_supplicant_again_at_once) {
    for (int i = 0; i < 4; ++i) {
        supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    }
    supplicant_.answer("SCAN", {"OK\n", "<3>unrelated"});
    supplicant_.event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ");
    const Stopwatch watch;
    EXPECT_EQ(cmd_to_scan(*session_), 0);
    EXPECT_LT(watch.elapsed(), milliseconds(1500));
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SCAN", "SCAN", "SCAN", "SCAN", "SCAN"));
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, fails_with_8_when_the_scan_is_refused) {
    supplicant_.answer("SCAN", {"FAIL\n"});
    EXPECT_EQ(cmd_to_scan(*session_), 8);
    EXPECT_EQ(console_.err(), "Scan Command not successful\n");
    EXPECT_EQ(console_.out(), "");
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SCAN"));
}

TEST_F(Station, fails_with_8_when_the_scan_is_refused_after_two_busy_replies) {
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL\n"});
    EXPECT_EQ(cmd_to_scan(*session_), 8);
    EXPECT_EQ(console_.err(), "Scan Command not successful\n");
}

TEST_F(Station, fails_with_24_when_the_scan_is_refused_after_three_busy_replies) {
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL\n"});
    EXPECT_EQ(cmd_to_scan(*session_), 24);
    EXPECT_EQ(console_.err(), "Scan returning FAIL-BUSY");
    EXPECT_EQ(console_.out(), "");
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SCAN", "SCAN", "SCAN", "SCAN"));
}

TEST_F(Station, fails_with_8_when_the_scan_command_is_unknown) {
    supplicant_.answer("SCAN", {"UNKNOWN COMMAND\n"});
    EXPECT_EQ(cmd_to_scan(*session_), 8);
}

TEST_F(Station, fails_with_8_when_the_supplicant_has_died) {
    supplicant_.die();
    EXPECT_EQ(cmd_to_scan(*session_), 8);
    EXPECT_EQ(console_.err(), "Scan Command not successful\n");
}

TEST_F(Station, fails_with_24_when_the_supplicant_dies_after_three_busy_replies) {
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    supplicant_.answer("SCAN", {"UNKNOWN COMMAND\n"});
    EXPECT_EQ(cmd_to_scan(*session_), 24);
}

// ---- listing -----------------------------------------------------------------------------------

constexpr const char* header = "bssid / frequency / signal level / flags / ssid\n";

TEST_F(Station, appends_the_whole_reply_buffer_to_the_listing) {
    const std::string text = std::string(header) + "02:00\t2412\t-40\t[ESS]\thome\n";
    supplicant_.answer("SCAN_RESULTS", {text});
    std::string listing = "before";
    EXPECT_TRUE(cmd_to_scan_results(*session_, listing));
    EXPECT_EQ(listing, "before" + text + std::string(1248 - text.size(), '\0'));
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, takes_a_listing_that_is_cut_at_the_buffer) {
    const std::string text = std::string(header) + std::string(2000, 'x');
    supplicant_.answer("SCAN_RESULTS", {text});
    std::string listing;
    EXPECT_TRUE(cmd_to_scan_results(*session_, listing));
    EXPECT_EQ(listing, text.substr(0, 1247) + std::string(1, '\0'));
}

TEST_F(Station, refuses_a_listing_that_fails_or_has_no_header) {
    supplicant_.answer("SCAN_RESULTS", {"FAIL\n"});
    supplicant_.answer("SCAN_RESULTS", {"OK\n"});
    supplicant_.answer("SCAN_RESULTS", {""});
    supplicant_.answer("SCAN_RESULTS", {"BSSID\n"});
    for (int i = 0; i < 4; ++i) {
        std::string listing;
        EXPECT_FALSE(cmd_to_scan_results(*session_, listing));
        EXPECT_EQ(listing, "");
        EXPECT_EQ(console_.err(), "scan_results Command not successful\n");
    }
    EXPECT_EQ(console_.out(), "");
}

// ---- finding the network -----------------------------------------------------------------------

struct Security {
    const char* name;
    const char* flags;
    const char* proto;
    const char* key_mgmt;
    const char* pairwise;
};

void PrintTo(const Security& security, std::ostream* out) {
    *out << security.flags;
}

class ScanLine : public Station, public ::testing::WithParamInterface<Security> {};

TEST_P(ScanLine, gives_the_security_of_the_network) {
    config_.go_ssid = "home";
    config_.scan_proto = "old";
    config_.scan_key_mgmt = "old";
    config_.scan_pairwise = "old";
    supplicant_.answer("SCAN_RESULTS", {std::string(header) + "02:00:00:00:00:01\t2412\t-40\t" +
                                        GetParam().flags + "\thome\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_EQ(config_.scan_proto, GetParam().proto);
    EXPECT_EQ(config_.scan_key_mgmt, GetParam().key_mgmt);
    EXPECT_EQ(config_.scan_pairwise, GetParam().pairwise);
    EXPECT_EQ(console_.out(), "homeis found...\n");
    EXPECT_EQ(console_.err(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Flags, ScanLine,
    ::testing::Values(
        Security{"mixed", "[WPA-PSK-CCMP+TKIP][WPA2-PSK-CCMP+TKIP][ESS]", "WPA2", "WPA-PSK",
                 "CCMP TKIP"},
        Security{"wpa2", "[WPA2-PSK-CCMP][ESS]", "RSN", "WPA-PSK", "CCMP"},
        Security{"wpa", "[WPA-PSK-TKIP][ESS]", "WPA", "WPA-PSK", "TKIP"},
        Security{"wpa_ccmp", "[WPA-PSK-CCMP][ESS]", "WPA", "WPA-PSK", "CCMP"},
        Security{"wpa2_both_ciphers", "[WPA2-PSK-CCMP+TKIP][ESS]", "RSN", "WPA-PSK", "CCMP TKIP"},
        Security{"wpa2_enterprise", "[WPA2-EAP-CCMP][ESS]", "RSN", "WPA-EAP", "CCMP"},
        Security{"wpa_enterprise", "[WPA-EAP-TKIP][ESS]", "WPA", "WPA-EAP", "TKIP"},
        Security{"enterprise_without_bracket", "WPA2-EAP-CCMP", "old", "WPA-EAP", "CCMP"},
        Security{"wpa_enterprise_without_bracket", "WPA-EAP-CCMP", "old", "old", "CCMP"},
        Security{"personal_before_enterprise", "[WPA-EAP-TKIP][WPA2-PSK-CCMP]", "WPA2", "WPA-PSK",
                 "CCMP TKIP"},
        Security{"wpa2_of_another_kind", "[WPA2-SAE-CCMP][ESS]", "RSN", "WPA-NONE", "CCMP"},
        Security{"wpa_of_another_kind", "[WPA-None-CCMP][ESS]", "WPA", "WPA-NONE", "CCMP"},
        Security{"wpa2_without_dash", "[WPA2][ESS]", "RSN", "old", "NONE"},
        Security{"wpa_without_dash", "[WPA][ESS]", "WPA", "old", "NONE"},
        Security{"open", "[ESS]", "old", "old", "NONE"},
        Security{"wep", "[WEP][ESS]", "old", "old", "NONE"},
        Security{"ciphers_alone", "TKIP CCMP", "old", "old", "CCMP TKIP"}),
    [](const auto& security) { return security.param.name; });

TEST_F(Station, finds_an_ssid_that_is_part_of_a_longer_one) {
    config_.go_ssid = "home";
    supplicant_.answer("SCAN_RESULTS",
                       {std::string(header) + "02:00\t2412\t-40\t[ESS]\tmyhome5\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
}

TEST_F(Station, takes_the_security_of_the_last_line_that_matches) {
    config_.go_ssid = "home";
    supplicant_.answer("SCAN_RESULTS",
                       {std::string(header) + "02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n"
                                              "02:02\t2412\t-40\t[WPA-EAP-TKIP]\thome2\n"
                                              "02:03\t2412\t-40\t[WPA2-PSK-CCMP]\tother\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_EQ(config_.scan_proto, "WPA");
    EXPECT_EQ(config_.scan_key_mgmt, "WPA-EAP");
    EXPECT_EQ(config_.scan_pairwise, "TKIP");
    EXPECT_EQ(console_.out(), "homeis found...\n");
}

TEST_F(Station, keeps_proto_and_key_management_of_an_earlier_line_when_the_last_has_none) {
    config_.go_ssid = "home";
    supplicant_.answer("SCAN_RESULTS",
                       {std::string(header) + "02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n"
                                              "02:02\t2412\t-40\t[ESS]\thome\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_EQ(config_.scan_proto, "RSN");
    EXPECT_EQ(config_.scan_key_mgmt, "WPA-PSK");
    EXPECT_EQ(config_.scan_pairwise, "NONE");
}

TEST_F(Station, does_not_find_a_network_that_is_not_listed) {
    config_.go_ssid = "home";
    config_.scan_proto = "old";
    config_.scan_pairwise = "old";
    supplicant_.answer("SCAN_RESULTS", {std::string(header) + "02:01\t2412\t-40\t[ESS]\tHOME\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_EQ(console_.out(), "homeis not found!!!\n");
    EXPECT_EQ(console_.err(), "");
    EXPECT_EQ(config_.scan_proto, "old");
    EXPECT_EQ(config_.scan_pairwise, "old");
}

TEST_F(Station, finds_nothing_without_an_ssid) {
    supplicant_.answer("SCAN_RESULTS", {std::string(header) + "02:01\t2412\t-40\t[ESS]\thome\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_EQ(console_.out(), "is not found!!!\n");
}

TEST_F(Station, finds_nothing_without_a_listing) {
    config_.go_ssid = "home";
    supplicant_.answer("SCAN_RESULTS", {"FAIL\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 1);
    EXPECT_EQ(console_.err(), "scan_results Command not successful\n");
    EXPECT_EQ(console_.out(), "homeis not found!!!\n");
}

TEST_F(Station, shows_the_lines_of_the_listing_with_debug) {
    run_options.debug = 1;
    config_.go_ssid = "home";
    supplicant_.answer("SCAN_RESULTS", {std::string(header) + "02:01\t2412\t-40\t[ESS]\thome\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    const std::string out = console_.out();
    const std::string lines = std::string(header) + "02:01\t2412\t-40\t[ESS]\thome\n";
    EXPECT_EQ(out.substr(0, lines.size()), lines);
    EXPECT_EQ(out.substr(out.size() - 16), "homeis found...\n");
}

TEST_F(Station, reads_a_listing_with_a_line_of_more_than_512_bytes_to_its_end) {
    config_.go_ssid = "home";
    supplicant_.answer("SCAN_RESULTS", {std::string(header) + std::string(700, 'x') +
                                        "\n02:01\t2412\t-40\t[WPA2-PSK-CCMP]\thome\n"});
    EXPECT_EQ(cmd_to_find_network(*session_, config_), 0);
    EXPECT_EQ(config_.scan_proto, "RSN");
}

// ---- adding a network --------------------------------------------------------------------------

TEST_F(Station, replaces_all_networks_by_a_new_one) {
    supplicant_.answer("ADD_NETWORK", {"0\n"});
    EXPECT_EQ(cmd_to_addnetwork(*session_), 0);
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("REMOVE_NETWORK all", "ADD_NETWORK"));
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, takes_every_reply_but_a_bare_0_for_the_network_0) {
    for (const char* reply : {"3\n", "3", "18\n", "0\n\n", "", "none"}) {
        supplicant_.answer("ADD_NETWORK", {reply});
        EXPECT_EQ(cmd_to_addnetwork(*session_), 0) << reply;
    }
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, fails_with_18_on_a_bare_0) {
    supplicant_.answer("ADD_NETWORK", {"0"});
    EXPECT_EQ(cmd_to_addnetwork(*session_), 18);
    EXPECT_EQ(console_.err(), "Fail to receive Network Id\n");
    EXPECT_EQ(console_.out(), "");
}

TEST_F(Station, fails_with_18_when_no_network_can_be_added) {
    supplicant_.answer("ADD_NETWORK", {"FAIL\n"});
    EXPECT_EQ(cmd_to_addnetwork(*session_), 18);
    EXPECT_EQ(console_.err(), "ADD_NETWORK Command not successful\n");
}

TEST_F(Station, adds_a_network_although_the_old_ones_cannot_be_removed) {
    supplicant_.answer("REMOVE_NETWORK all", {"FAIL\n"});
    supplicant_.answer("ADD_NETWORK", {"0\n"});
    EXPECT_EQ(cmd_to_addnetwork(*session_), 0);
    EXPECT_EQ(console_.err(), "REMOVE_NETWORK Command is  not successful\n");
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("REMOVE_NETWORK all", "ADD_NETWORK"));
}

// ---- configuring it ----------------------------------------------------------------------------

class SetNetwork : public Station {
protected:
    void SetUp() override {
        Station::SetUp();
        config_.go_ssid = "my home";
        config_.go_passphrase = "s3cret \"x\"";
        config_.scan_proto = "WPA2";
        config_.scan_key_mgmt = "WPA-PSK";
        config_.scan_pairwise = "CCMP TKIP";
        // Read from the file, but not what the station connects with.
        config_.ssid = "unused";
        config_.psk = "unused";
        config_.key_mgmt = "unused";
        config_.pairwise = "unused";
    }

    const std::vector<std::string> commands_{
        "SET_NETWORK 3 ssid \"my home\"",   "SET_NETWORK 3 auth_alg OPEN",
        "SET_NETWORK 3 proto WPA2",         "SET_NETWORK 3 key_mgmt WPA-PSK",
        "SET_NETWORK 3 pairwise CCMP TKIP", "SET_NETWORK 3 psk \"s3cret \"x\"\"",
    };
};

TEST_F(SetNetwork, sends_six_settings_in_their_order) {
    EXPECT_EQ(cmd_to_setnetwork(*session_, config_, 3), 0);
    EXPECT_EQ(supplicant_.spoken(), commands_);
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(SetNetwork, sets_the_psk_of_an_open_network_too) {
    config_.scan_proto.clear();
    config_.scan_key_mgmt.clear();
    config_.scan_pairwise = "NONE";
    EXPECT_EQ(cmd_to_setnetwork(*session_, config_, 0), 0);
    EXPECT_THAT(supplicant_.spoken(),
                ElementsAre("SET_NETWORK 0 ssid \"my home\"", "SET_NETWORK 0 auth_alg OPEN",
                            "SET_NETWORK 0 proto ", "SET_NETWORK 0 key_mgmt ",
                            "SET_NETWORK 0 pairwise NONE", "SET_NETWORK 0 psk \"s3cret \"x\"\""));
}

TEST_F(SetNetwork, sends_a_negative_id_as_it_is) {
    EXPECT_EQ(cmd_to_setnetwork(*session_, config_, -7), 0);
    EXPECT_EQ(supplicant_.spoken().front(), "SET_NETWORK -7 ssid \"my home\"");
}

TEST_F(SetNetwork, cuts_a_command_at_127_characters_and_sends_it_so) {
    config_.go_ssid = std::string(300, 's');
    EXPECT_EQ(cmd_to_setnetwork(*session_, config_, 3), 0);
    EXPECT_EQ(supplicant_.spoken().front(), "SET_NETWORK 3 ssid \"" + std::string(107, 's'));
    EXPECT_EQ(supplicant_.spoken().front().size(), 127U);
    EXPECT_EQ(supplicant_.spoken().size(), 6U);
}

struct RefusedSetting {
    const char* field;
    std::size_t step;
    const char* message;
};

void PrintTo(const RefusedSetting& setting, std::ostream* out) {
    *out << setting.field;
}

class SettingOfANetwork : public SetNetwork,
                          public ::testing::WithParamInterface<RefusedSetting> {};

TEST_P(SettingOfANetwork, that_is_refused_ends_with_19) {
    const auto& refused = GetParam();
    supplicant_.answer(commands_[refused.step], {"FAIL\n"});
    EXPECT_EQ(cmd_to_setnetwork(*session_, config_, 3), 19);
    EXPECT_EQ(console_.err(), refused.message);
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(supplicant_.spoken().size(), refused.step + 1);
}

INSTANTIATE_TEST_SUITE_P(
    Steps, SettingOfANetwork,
    ::testing::Values(
        RefusedSetting{"ssid", 0, "SET_NETWORK Command for ssid is  not successful\n"},
        RefusedSetting{"auth_alg", 1, "SET_NETWORK Command for auth_alg is not successful\n"},
        RefusedSetting{"proto", 2, "SET_NETWORK Command for proto is not successful\n"},
        RefusedSetting{"key_mgmt", 3, "SET_NETWORK Command for key_mgmt is not successful\n"},
        RefusedSetting{"pairwise", 4, "SET_NETWORK Command for pairwise is not successful\n"},
        RefusedSetting{"psk", 5, "SET_NETWORK Command for psk is not successful\n"}),
    [](const auto& setting) { return setting.param.field; });

// ---- selecting and disabling it ----------------------------------------------------------------

TEST_F(Station, selects_the_network_and_waits_for_the_connection) {
    supplicant_.event_after("SELECT_NETWORK 0 ", "<3>CTRL-EVENT-BSS-ADDED");
    supplicant_.event_after("SELECT_NETWORK 0 ", "<3>CTRL-EVENT-CONNECTED - Connection to 02:00",
                            milliseconds(300));
    EXPECT_EQ(cmd_to_selectnetwork(*session_, 0), 0);
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SELECT_NETWORK 0 "));
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, fails_with_20_when_the_selection_is_refused) {
    supplicant_.answer("SELECT_NETWORK 4 ", {"FAIL\n"});
    EXPECT_EQ(cmd_to_selectnetwork(*session_, 4), 20);
    EXPECT_EQ(console_.err(), "SELECT_NETWORK Command is  not successful\n");
    EXPECT_EQ(console_.out(), "");
}

TEST_F(Station, disables_the_network_and_waits_for_the_disconnection) {
    supplicant_.event_after("DISABLE_NETWORK 0 ", "<3>CTRL-EVENT-DISCONNECTED bssid=02:00",
                            milliseconds(300));
    EXPECT_EQ(cmd_to_disablenetwork(*session_, 0), 0);
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("DISABLE_NETWORK 0 "));
    EXPECT_EQ(console_.out(), "DISABLE_NETWORK 0 \n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(Station, fails_with_22_when_the_disabling_is_refused) {
    supplicant_.answer("DISABLE_NETWORK 4 ", {"FAIL\n"});
    EXPECT_EQ(cmd_to_disablenetwork(*session_, 4), 22);
    EXPECT_EQ(console_.out(), "DISABLE_NETWORK 4 \n");
    EXPECT_EQ(console_.err(), "DISABLE_NETWORK Command is  not successful\n");
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "common/process_state.hpp"
#include "made_up_clock.hpp"
#include "ops/station.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace wivex {
namespace {

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
    EXPECT_THAT(console_.streams(), Pair("", "Sockets are not opened\n"));
}

TEST_F(Station, asks_for_no_listing_on_a_session_that_is_not_open_and_says_nothing) {
    session_->close();
    console_.out();
    std::string listing;
    EXPECT_FALSE(cmd_to_scan_results(*session_, listing));
    EXPECT_EQ(listing, "");
    EXPECT_THAT(console_.streams(), Pair("", ""));
}

// ---- scan --------------------------------------------------------------------------------------

TEST_F(Station, scans_and_waits_for_the_results) {
    supplicant_.event_after("SCAN", "<3>CTRL-EVENT-SCAN-STARTED ");
    supplicant_.event_after("SCAN", "<3>TRL-EVENT-SCAN-RESULTS ");
    supplicant_.event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULT ");
    supplicant_.event_after("SCAN", "<3>CTRL-EVENT-SCAN-RESULTS ", milliseconds(700));
    const Stopwatch watch;
    EXPECT_EQ(cmd_to_scan(*session_), 0);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(690)), Le(milliseconds(1690))));
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SCAN"));
    EXPECT_THAT(console_.streams(), Pair("", ""));
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

struct RefusedScan {
    const char* name;
    std::vector<std::string> replies;
    ErrorCode code;
    const char* message;
};

void PrintTo(const RefusedScan& refused, std::ostream* out) {
    *out << refused.name;
}

class ScanThatIsRefused : public Station, public WithParamInterface<RefusedScan> {};

TEST_P(ScanThatIsRefused, fails_with_its_code) {
    for (const std::string& reply : GetParam().replies) {
        supplicant_.answer("SCAN", {reply});
    }
    EXPECT_EQ(cmd_to_scan(*session_), GetParam().code);
    EXPECT_THAT(console_.streams(), Pair("", GetParam().message));
    EXPECT_THAT(supplicant_.spoken(),
                AllOf(SizeIs(GetParam().replies.size()), Each(StrEq("SCAN"))));
}

constexpr const char* not_successful = "Scan Command not successful\n";
constexpr const char* busy = "Scan returning FAIL-BUSY";

INSTANTIATE_TEST_SUITE_P(Replies, ScanThatIsRefused,
                         Values(RefusedScan{"at_once", {"FAIL\n"}, 8, not_successful},
                                RefusedScan{"as_unknown", {"UNKNOWN COMMAND\n"}, 8, not_successful},
                                RefusedScan{"after_two_busy_replies",
                                            {"FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL\n"},
                                            8,
                                            not_successful},
                                RefusedScan{"after_three_busy_replies",
                                            {"FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL\n"},
                                            24,
                                            busy},
                                RefusedScan{"as_unknown_after_three_busy_replies",
                                            {"FAIL-BUSY\n", "FAIL-BUSY\n", "FAIL-BUSY\n",
                                             "UNKNOWN COMMAND\n"},
                                            24,
                                            busy}),
                         [](const auto& scan) { return scan.param.name; });

TEST_F(Station, asks_again_only_on_the_whole_word_of_a_busy_supplicant) {
    supplicant_.answer("SCAN", {"FAIL AIL-BUSY FAIL-BUS\n"});
    supplicant_.answer("SCAN", {"FAIL\n"});
    EXPECT_EQ(cmd_to_scan(*session_), 8);
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("SCAN"));
}

TEST_F(Station, fails_with_8_when_the_supplicant_has_died) {
    supplicant_.die();
    EXPECT_EQ(cmd_to_scan(*session_), 8);
    EXPECT_EQ(console_.err(), "Scan Command not successful\n");
}

// ---- adding a network --------------------------------------------------------------------------

TEST_F(Station, replaces_all_networks_by_a_new_one) {
    supplicant_.answer("ADD_NETWORK", {"0\n"});
    EXPECT_EQ(cmd_to_addnetwork(*session_), 0);
    EXPECT_THAT(supplicant_.spoken(), ElementsAre("REMOVE_NETWORK all", "ADD_NETWORK"));
    EXPECT_THAT(console_.streams(), Pair("", ""));
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
    EXPECT_THAT(console_.streams(), Pair("", "Fail to receive Network Id\n"));
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
    EXPECT_THAT(console_.streams(), Pair("", ""));
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

class SettingOfANetwork : public SetNetwork, public WithParamInterface<RefusedSetting> {};

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
    Values(RefusedSetting{"ssid", 0, "SET_NETWORK Command for ssid is  not successful\n"},
           RefusedSetting{"auth_alg", 1, "SET_NETWORK Command for auth_alg is not successful\n"},
           RefusedSetting{"proto", 2, "SET_NETWORK Command for proto is not successful\n"},
           RefusedSetting{"key_mgmt", 3, "SET_NETWORK Command for key_mgmt is not successful\n"},
           RefusedSetting{"pairwise", 4, "SET_NETWORK Command for pairwise is not successful\n"},
           RefusedSetting{"psk", 5, "SET_NETWORK Command for psk is not successful\n"}),
    [](const auto& setting) { return setting.param.field; });

// ---- selecting and disabling it ----------------------------------------------------------------

struct NetworkCommand {
    const char* name;
    ErrorCode (*send)(SupplicantSession& session, int id);
    /// Up to the network's id.
    std::string command;
    const char* event;
    std::vector<const char*> other_events;
    bool announced;
    ErrorCode refused_with;
    const char* message;
    ErrorCode late_with;
    const char* late;
};

void PrintTo(const NetworkCommand& command, std::ostream* out) {
    *out << command.command;
}

class CommandToANetwork : public Station, public WithParamInterface<NetworkCommand> {
protected:
    /// What the console shows of the command.
    static std::string shown(const std::string& command) {
        return GetParam().announced ? command + "\n" : "";
    }
};

TEST_P(CommandToANetwork, waits_for_its_event) {
    const std::string command = GetParam().command + "0 ";
    for (const char* other : GetParam().other_events) {
        supplicant_.event_after(command, other);
    }
    supplicant_.event_after(command, GetParam().event, milliseconds(300));
    const Stopwatch watch;
    EXPECT_EQ(GetParam().send(*session_, 0), 0);
    EXPECT_GE(watch.elapsed(), milliseconds(290));
    EXPECT_THAT(supplicant_.spoken(), ElementsAre(command));
    EXPECT_THAT(console_.streams(), Pair(shown(command), ""));
}

TEST_P(CommandToANetwork, that_is_refused_fails_with_its_code) {
    const std::string command = GetParam().command + "4 ";
    supplicant_.answer(command, {"FAIL\n"});
    EXPECT_EQ(GetParam().send(*session_, 4), GetParam().refused_with);
    EXPECT_THAT(console_.streams(), Pair(shown(command), GetParam().message));
}

TEST_P(CommandToANetwork, gives_up_when_its_event_does_not_come_in_30_seconds) {
    const MadeUpClock clock(&supplicant_);
    EXPECT_EQ(GetParam().send(*session_, 0), GetParam().late_with);
    EXPECT_THAT(clock.story(), ElementsAre("waits 30 s"));
    EXPECT_THAT(console_.streams(), Pair(shown(GetParam().command + "0 "), GetParam().late));
}

INSTANTIATE_TEST_SUITE_P(Commands, CommandToANetwork,
                         Values(NetworkCommand{"select",
                                               cmd_to_selectnetwork,
                                               "SELECT_NETWORK ",
                                               "<3>CTRL-EVENT-CONNECTED - Connection to 02:00",
                                               {"<3>CTRL-EVENT-BSS-ADDED", "<3>TRL-EVENT-CONNECTED",
                                                "<3>CTRL-EVENT-CONNECTE"},
                                               false,
                                               20,
                                               "SELECT_NETWORK Command is  not successful\n",
                                               20,
                                               "Unable to Connect Time out!!!\n"},
                                NetworkCommand{
                                    "disable",
                                    cmd_to_disablenetwork,
                                    "DISABLE_NETWORK ",
                                    "<3>CTRL-EVENT-DISCONNECTED bssid=02:00",
                                    {"<3>TRL-EVENT-DISCONNECTED", "<3>CTRL-EVENT-DISCONNECTE"},
                                    true,
                                    22,
                                    "DISABLE_NETWORK Command is  not successful\n",
                                    1,
                                    "Timeout waiting for CTRL-EVENT-DISCONNECTED event\n"}),
                         [](const auto& command) { return command.param.name; });

} // namespace
} // namespace wivex

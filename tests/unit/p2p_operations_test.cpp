// SPDX-License-Identifier: Apache-2.0
#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "console_capture.hpp"
#include "fake_supplicant.hpp"
#include "made_up_clock.hpp"
#include "ops/p2p.hpp"
#include "scratch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using testing::ElementsAre;
using wivex::Reply;
using wivex::ReplyBuffer;
using wivex::SupplicantSession;
using wivex::test_support::ConsoleCapture;
using wivex::test_support::FakeSupplicant;
using wivex::test_support::use_private_tmp;

constexpr const char* peer = "02:00:00:00:00:01";

class P2pOperations : public testing::Test {
protected:
    P2pOperations() {
        use_private_tmp();
        scratch.emplace();
        supplicant.emplace(*scratch / "wlan0");
        config.ctrl_iface = scratch->path();
        config.interface_name = "wlan0";
        {
            const wivex::test_support::MadeUpClock clock;
            session.emplace(config);
        }
        console.emplace();
    }
    void TearDown() override {
        wivex::run_options.debug = 0;
    }

    void expect_refused(int result, int code, const char* last_lines) {
        EXPECT_EQ(result, code);
        EXPECT_THAT(console->out(), testing::EndsWith(last_lines));
    }

    void expect_plain(int result, const char* command, const char* told) {
        EXPECT_EQ(result, 0);
        EXPECT_THAT(supplicant->spoken(), ElementsAre(command));
        EXPECT_EQ(console->out(), told);
    }

    std::optional<wivex::test_support::ScratchDirectory> scratch;
    std::optional<FakeSupplicant> supplicant;
    wivex::RunConfig config;
    std::optional<SupplicantSession> session;
    std::optional<ConsoleCapture> console;
    ReplyBuffer buffer{};
    Reply reply{buffer};
};

TEST_F(P2pOperations, flush_prints_its_command_between_the_words_without_blanks) {
    EXPECT_EQ(wivex::p2pFlush(*session, reply), 0);
    EXPECT_THAT(supplicant->spoken(), ElementsAre("P2P_FLUSH"));
    EXPECT_EQ(console->out(), "SentP2P_FLUSHcommand to wpa_supplicant:OK\n\n");
}

TEST_F(P2pOperations, refused_flush_prints_a_line_without_a_newline) {
    supplicant->answer("P2P_FLUSH", {"FAIL\n"});
    EXPECT_EQ(wivex::p2pFlush(*session, reply), -1);
    EXPECT_EQ(console->out(), "Failed to send P2P_FLUSH command to wpa_supplicant");
}

TEST_F(P2pOperations, stop_find_sends_its_command) {
    expect_plain(wivex::p2pStopFind(*session, reply), "P2P_STOP_FIND",
                 "SentP2P_STOP_FINDcommand to wpa_supplicant:OK\n\n");
}

TEST_F(P2pOperations, find_returns_when_the_peer_was_found) {
    supplicant->event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01 name='x'");
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), 0);
    EXPECT_EQ(console->out(), "SUCCESS:P2P_FIND\n"
                              "Sent P2P_FIND command to wpa_supplicant:OK\n\n"
                              "MATCH FOUND!!!02:00:00:00:00:01\n");
}

TEST_F(P2pOperations, find_gives_up_when_the_peer_does_not_come_in_60_seconds) {
    const wivex::test_support::MadeUpClock clock(&*supplicant);
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), -1);
    EXPECT_THAT(clock.story(), ElementsAre("waits 60 s"));
}

TEST_F(P2pOperations, find_passes_over_other_peers) {
    supplicant->event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:09");
    supplicant->event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01");
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), 0);
}

TEST_F(P2pOperations, find_passes_over_other_events_that_name_the_peer) {
    wivex::run_options.debug = 1;
    supplicant->event_after("P2P_FIND", "<3>X2P-DEVICE-FOUND 02:00:00:00:00:01");
    supplicant->event_after("P2P_FIND", "<3>P2P-DEVICE-FOUNX 02:00:00:00:00:01");
    supplicant->event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01");
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), 0);
    EXPECT_THAT(console->out(), testing::EndsWith("In parse event : Device 02:00:00:00:00:01 "
                                                  "line:<3>P2P-DEVICE-FOUND 02:00:00:00:00:01.\n\n"
                                                  "MATCH FOUND!!!02:00:00:00:00:01\n"));
}

TEST_F(P2pOperations, busy_find_fails_with_the_reply_in_its_line) {
    supplicant->answer("P2P_FIND", {"FAIL-BUSY\n"});
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), -1);
    EXPECT_EQ(console->out(), "Failed to send P2P_FIND command to wpa_supplicantFAIL-BUSY\n\n");
}

TEST_F(P2pOperations, find_whose_reply_holds_no_ok_fails) {
    supplicant->answer("P2P_FIND", {"KO\n"});
    supplicant->event_after("P2P_FIND", "<3>P2P-DEVICE-FOUND 02:00:00:00:00:01");
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), -1);
    EXPECT_EQ(console->out(), "FAILED:P2P_FIND\n");
}

TEST_F(P2pOperations, join_names_peer_and_method) {
    EXPECT_EQ(wivex::p2pConnectJoin(*session, peer, "pbc", reply), 0);
    EXPECT_THAT(supplicant->spoken(),
                ElementsAre("P2P_CONNECT 02:00:00:00:00:01 pbc join persistent"));
    EXPECT_EQ(console->out(), "P2P_CONNECT 02:00:00:00:00:01 pbc join persistent\n"
                              "SentP2P_CONNECT 02:00:00:00:00:01 pbc join persistent"
                              "command to wpa_supplicant:OK\n\n");
}

TEST_F(P2pOperations, refused_join_prints_a_line_without_a_newline) {
    supplicant->answer("P2P_CONNECT 02:00:00:00:00:01 pbc join persistent", {"FAIL\n"});
    EXPECT_EQ(wivex::p2pConnectJoin(*session, peer, "pbc", reply), -1);
    EXPECT_EQ(console->out(), "P2P_CONNECT 02:00:00:00:00:01 pbc join persistent\n"
                              "Failed to send P2P_CONNECT command to wpa_supplicant");
}

TEST_F(P2pOperations, join_without_a_peer_sends_nothing) {
    EXPECT_EQ(wivex::p2pConnectJoin(*session, nullptr, "pbc", reply), -1);
    EXPECT_THAT(supplicant->spoken(), ElementsAre());
    EXPECT_EQ(console->out(), "Peer address is NULL!!");
}

TEST_F(P2pOperations, push_button_connect_ignores_its_method_and_keeps_both_blanks) {
    EXPECT_EQ(wivex::p2pConnectPbc(*session, peer, "keypad", "7", reply), 0);
    EXPECT_THAT(supplicant->spoken(),
                ElementsAre("P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7"));
    EXPECT_EQ(console->out(), "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7\n"
                              "OK\n\n"
                              "Sent P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7"
                              " command to wpa_supplicant:OK\n\n");
}

TEST_F(P2pOperations, refused_push_button_connect_prints_the_reply_and_a_whole_line) {
    supplicant->answer("P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7", {"FAIL\n"});
    EXPECT_EQ(wivex::p2pConnectPbc(*session, peer, "pbc", "7", reply), -1);
    EXPECT_EQ(console->out(), "P2P_CONNECT 02:00:00:00:00:01 pbc  go_intent=7\n"
                              "FAIL\n\n"
                              "Failed to send P2P_CONNECT command to wpa_supplicant\n");
}

TEST_F(P2pOperations, push_button_connect_without_a_peer_sends_nothing) {
    EXPECT_EQ(wivex::p2pConnectPbc(*session, nullptr, "pbc", "7", reply), -1);
    EXPECT_EQ(console->out(), "Peer address is NULL!!");
}

TEST_F(P2pOperations, group_add_sends_its_command) {
    expect_plain(wivex::p2pGroupAdd(*session, reply), "P2P_GROUP_ADD",
                 "SentP2P_GROUP_ADDcommand to wpa_supplicant:OK\n\n");
}

TEST_F(P2pOperations, secured_group_add_names_ssid_and_pass_phrase) {
    EXPECT_EQ(wivex::p2pGroupAddSecured(*session, "DIRECT-x", "12345678", reply), 0);
    EXPECT_THAT(supplicant->spoken(),
                ElementsAre("P2P_GROUP_ADD ssid=DIRECT-x passphrase=12345678"));
}

TEST_F(P2pOperations, group_add_on_a_channel_names_the_frequency) {
    EXPECT_EQ(wivex::p2pGroupAddOnChannel(*session, "DIRECT-x", "12345678", 2437, reply), 0);
    EXPECT_THAT(supplicant->spoken(),
                ElementsAre("P2P_GROUP_ADD ssid=DIRECT-x passphrase=12345678 freq=2437"));
}

TEST_F(P2pOperations, group_removal_prints_no_reply) {
    EXPECT_EQ(wivex::p2pGroupRemove(*session, "wlan0", reply), 0);
    EXPECT_THAT(supplicant->spoken(), ElementsAre("P2P_GROUP_REMOVE wlan0"));
    EXPECT_EQ(console->out(), "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n");
}

TEST_F(P2pOperations, group_removal_prints_the_reply_when_debugging) {
    wivex::run_options.debug = 1;
    EXPECT_EQ(wivex::p2pGroupRemove(*session, "wlan0", reply), 0);
    EXPECT_EQ(console->out(), "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\nOK\n\n");
}

TEST_F(P2pOperations, refused_group_removal_prints_a_line_without_a_newline) {
    supplicant->answer("P2P_GROUP_REMOVE wlan0", {"FAIL\n"});
    EXPECT_EQ(wivex::p2pGroupRemove(*session, "wlan0", reply), -1);
    EXPECT_EQ(console->out(), "Failed to send P2P_GROUP_REMOVE command to wpa_supplicant");
}

TEST_F(P2pOperations, that_are_refused_name_themselves_without_a_newline) {
    supplicant->answer("P2P_STOP_FIND", {"FAIL\n"});
    supplicant->answer("P2P_GROUP_ADD", {"FAIL\n"});
    supplicant->answer("P2P_GROUP_ADD ssid=x passphrase=y", {"FAIL\n"});
    supplicant->answer("P2P_GROUP_ADD ssid=x passphrase=y freq=2437", {"FAIL\n"});
    EXPECT_EQ(wivex::p2pStopFind(*session, reply), -1);
    EXPECT_EQ(console->out(), "Failed to send P2P_STOP_FIND command to wpa_supplicant");
    const char* const refused = "Failed to send P2P_GROUP_ADD command to wpa_supplicant";
    EXPECT_EQ(wivex::p2pGroupAdd(*session, reply), -1);
    EXPECT_EQ(console->out(), refused);
    EXPECT_EQ(wivex::p2pGroupAddSecured(*session, "x", "y", reply), -1);
    EXPECT_EQ(console->out(), refused);
    EXPECT_EQ(wivex::p2pGroupAddOnChannel(*session, "x", "y", 2437, reply), -1);
    EXPECT_EQ(console->out(), refused);
}

TEST_F(P2pOperations, cut_the_reply_at_the_capacity_they_are_given) {
    supplicant->answer("P2P_GROUP_REMOVE wlan0", {"0123456789"});
    EXPECT_EQ(wivex::p2pGroupRemove(*session, "wlan0", reply.limited_to(4)), 0);
    EXPECT_STREQ(reply.c_str(), "0123");
}

TEST_F(P2pOperations, print_nothing_without_an_open_session) {
    session->close();
    console->out();
    EXPECT_EQ(wivex::p2pFlush(*session, reply), -1);
    EXPECT_EQ(wivex::p2pFind(*session, reply, peer), -1);
    EXPECT_EQ(wivex::p2pStopFind(*session, reply), -1);
    EXPECT_EQ(wivex::p2pConnectJoin(*session, peer, "pbc", reply), -1);
    EXPECT_EQ(wivex::p2pConnectPbc(*session, peer, "pbc", "7", reply), -1);
    EXPECT_EQ(wivex::p2pGroupAdd(*session, reply), -1);
    EXPECT_EQ(wivex::p2pGroupRemove(*session, "wlan0", reply), -1);
    EXPECT_EQ(wivex::listen_device_P2P(*session), -1);
    EXPECT_EQ(console->out(), "");
}

TEST_F(P2pOperations, search_without_a_peer_fails_with_26_when_the_find_is_refused) {
    supplicant->answer("P2P_FIND", {"FAIL\n"});
    EXPECT_EQ(wivex::search_device_P2P(*session), 26);
    EXPECT_THAT(supplicant->spoken(), ElementsAre("P2P_FLUSH", "P2P_FIND"));
    EXPECT_EQ(console->out(), "SentP2P_FLUSHcommand to wpa_supplicant:OK\n\n"
                              "Failed to send P2P_FIND command to wpa_supplicantFAIL\n\n"
                              "search_device_P2P fail\n");
}

TEST_F(P2pOperations, stopping_a_search_searches_again) {
    supplicant->answer("P2P_FIND", {"FAIL\n"});
    expect_refused(wivex::stop_search_device_P2P(*session), 26, "stop_search_device_P2P fail\n");
    EXPECT_THAT(supplicant->spoken(), ElementsAre("P2P_FLUSH", "P2P_FIND"));
}

TEST_F(P2pOperations, listening_flushes_first) {
    EXPECT_EQ(wivex::listen_device_P2P(*session), 0);
    EXPECT_THAT(supplicant->spoken(), ElementsAre("P2P_FLUSH", "P2P_LISTEN"));
    EXPECT_EQ(console->out(), "SentP2P_FLUSHcommand to wpa_supplicant:OK\n\n"
                              "SUCCESS:P2P_LISTEN\n"
                              "SentP2P_LISTENcommand to wpa_supplicant:OK\n\n");
}

TEST_F(P2pOperations, refused_listening_fails_with_28) {
    supplicant->answer("P2P_LISTEN", {"FAIL\n"});
    expect_refused(wivex::listen_device_P2P(*session), 28,
                   "listen_device_P2P fail\nFAILED:P2P_LISTEN\n");
}

TEST_F(P2pOperations, listening_whose_reply_holds_no_ok_fails_with_28) {
    supplicant->answer("P2P_LISTEN", {"KO\n"});
    expect_refused(wivex::listen_device_P2P(*session), 28,
                   "SentP2P_FLUSHcommand to wpa_supplicant:OK\n\nFAILED:P2P_LISTEN\n");
}

TEST_F(P2pOperations, listening_counts_an_answer_of_9_characters_whole) {
    supplicant->answer("P2P_LISTEN", {"accept OK"});
    EXPECT_EQ(wivex::listen_device_P2P(*session), 0);
}

TEST_F(P2pOperations, listening_does_not_see_the_tenth_character_of_an_answer) {
    supplicant->answer("P2P_LISTEN", {"accepts OK"});
    EXPECT_EQ(wivex::listen_device_P2P(*session), 28);
}

class P2pEventMatcher : public testing::Test {
protected:
    ConsoleCapture console;
};

TEST_F(P2pEventMatcher, finds_the_peer_anywhere_behind_the_first_character) {
    EXPECT_EQ(wivex::parseP2pEvent("<3>P2P-DEVICE-FOUND 02:00:00:00:00:01", peer), 1);
    EXPECT_EQ(console.out(), "MATCH FOUND!!!02:00:00:00:00:01\n");
}

TEST_F(P2pEventMatcher, drops_the_first_character_of_each_line) {
    EXPECT_EQ(wivex::parseP2pEvent("02:00:00:00:00:01 found", peer), 0);
    EXPECT_EQ(wivex::parseP2pEvent("one\n02:00:00:00:00:01\nthree", peer), 0);
    EXPECT_EQ(wivex::parseP2pEvent("one\n 02:00:00:00:00:01\nthree", peer), 1);
}

TEST_F(P2pEventMatcher, sees_the_first_1247_characters_of_a_line) {
    EXPECT_EQ(wivex::parseP2pEvent(("<" + std::string(1230, 'x') + peer).c_str(), peer), 1);
    EXPECT_EQ(wivex::parseP2pEvent(("<" + std::string(1231, 'x') + peer).c_str(), peer), 0);
}

TEST_F(P2pEventMatcher, compares_case) {
    EXPECT_EQ(wivex::parseP2pEvent("<3>found AA:00:00:00:00:01", "aa:00:00:00:00:01"), 0);
}

TEST_F(P2pEventMatcher, never_matches_an_absent_peer) {
    EXPECT_EQ(wivex::parseP2pEvent("<3>P2P-DEVICE-FOUND", nullptr), 0);
}

TEST_F(P2pEventMatcher, always_matches_an_empty_peer) {
    EXPECT_EQ(wivex::parseP2pEvent("<3>P2P-DEVICE-FOUND", ""), 1);
}

TEST_F(P2pEventMatcher, tells_what_it_parses_when_debugging) {
    wivex::run_options.debug = 1;
    wivex::parseP2pEvent("<3>x", "GO");
    wivex::run_options.debug = 0;
    EXPECT_EQ(console.out(), "In parse event : Device GO line:<3>x.\n\n");
}

} // namespace

// SPDX-License-Identifier: Apache-2.0
#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "common/shell.hpp"
#include "console_capture.hpp"
#include "ctrl/supplicant_session.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "fake_supplicant.hpp"
#include "scratch.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace wivex {
namespace {

using std::chrono::milliseconds;
using test_support::ConsoleCapture;
using test_support::exists;
using test_support::FakeSupplicant;
using test_support::ScratchDirectory;
using test_support::Stopwatch;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::Le;
using ::testing::Not;

constexpr const char* closing_trace =
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n"
    "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";

class SessionBase : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        test_support::use_private_tmp();
    }
    void SetUp() override {
        test_support::reset_process_state();
        config_.ctrl_iface = directory_.path();
        config_.interface_name = "wlan5";
    }
    void TearDown() override {
        test_support::reset_process_state();
    }

    ScratchDirectory directory_;
    ConsoleCapture console_;
    RunConfig config_;
};

class Session : public SessionBase {
protected:
    FakeSupplicant supplicant_{directory_ / "wlan5"};
};

class OpenSession : public Session {
protected:
    void SetUp() override {
        Session::SetUp();
        session_.emplace(config_);
        ASSERT_FALSE(session_->isInvalid());
        console_.out();
    }

    bool send(const char* command) {
        buffer_.fill('#');
        return session_->sendCommand(command, reply_);
    }

    std::optional<SupplicantSession> session_;
    ReplyBuffer buffer_{};
    Reply reply_{buffer_};
};

// ---- opening and closing -----------------------------------------------------------------------

TEST_F(Session, opens_two_connections_and_attaches_the_second_a_second_later) {
    const Stopwatch watch;
    SupplicantSession session(config_);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(950)), Le(milliseconds(2900))));
    EXPECT_FALSE(session.isInvalid());
    ASSERT_NE(command_connection, nullptr);
    ASSERT_NE(event_connection, nullptr);
    EXPECT_NE(command_connection, event_connection);
    const auto received = supplicant_.received();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].command, "ATTACH");
    EXPECT_STREQ(received[0].sender.sun_path, event_connection->local.sun_path);
    EXPECT_EQ(session.lastCommand(), "");
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(OpenSession, detaches_the_event_connection_when_it_closes) {
    const std::string event_name = event_connection->local.sun_path;
    const std::string command_name = command_connection->local.sun_path;
    session_->close();
    EXPECT_TRUE(session_->isInvalid());
    EXPECT_EQ(command_connection, nullptr);
    EXPECT_EQ(event_connection, nullptr);
    EXPECT_FALSE(exists(event_name));
    EXPECT_FALSE(exists(command_name));
    EXPECT_EQ(console_.out(), closing_trace);
    const auto received = supplicant_.received();
    ASSERT_EQ(received.size(), 2U);
    EXPECT_EQ(received[1].command, "DETACH");
    EXPECT_STREQ(received[1].sender.sun_path, event_name.c_str());
}

TEST_F(OpenSession, closes_although_the_detach_is_refused) {
    supplicant_.answer("DETACH", {"FAIL\n"});
    session_->close();
    EXPECT_TRUE(session_->isInvalid());
    EXPECT_EQ(event_connection, nullptr);
}

TEST_F(OpenSession, closes_once_however_often_it_is_asked) {
    session_->close();
    console_.out();
    session_->close();
    session_.reset();
    EXPECT_EQ(console_.out(), "");
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH", "DETACH"));
}

TEST_F(OpenSession, closes_when_it_is_destroyed) {
    session_.reset();
    EXPECT_EQ(command_connection, nullptr);
    EXPECT_EQ(event_connection, nullptr);
    EXPECT_EQ(console_.out(), closing_trace);
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH", "DETACH"));
}

TEST_F(OpenSession, keeps_its_sockets_from_the_commands_that_the_tool_runs) {
    ASSERT_EQ(run_shell("ls -l /proc/self/fd >" + (directory_ / "descriptors")), 0);
    EXPECT_THAT(test_support::read_file(directory_ / "descriptors"), Not(HasSubstr("socket:")));
}

TEST_F(OpenSession, opens_again_after_a_close) {
    session_->close();
    EXPECT_TRUE(session_->open(config_));
    EXPECT_FALSE(session_->isInvalid());
    EXPECT_TRUE(send("PING"));
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH", "DETACH", "ATTACH", "PING"));
}

TEST_F(OpenSession, opened_once_more_stays_as_it_is_but_removes_all_client_socket_files) {
    const auto* command_before = command_connection;
    const std::string name = command_connection->local.sun_path;
    ::close(::open("/tmp/wpa_ctrl_1-1", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    const Stopwatch watch;
    EXPECT_TRUE(session_->open(config_));
    EXPECT_LT(watch.elapsed(), milliseconds(900));
    EXPECT_EQ(command_connection, command_before);
    EXPECT_FALSE(exists("/tmp/wpa_ctrl_1-1"));
    EXPECT_FALSE(exists(name));
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH"));
}

TEST_F(SessionBase, without_a_supplicant_stays_closed) {
    ::close(::open("/tmp/wpa_ctrl_1-1", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
    SupplicantSession session(config_);
    EXPECT_TRUE(session.isInvalid());
    EXPECT_EQ(console_.out(), "[WIFI]Unable to open sockets!!\n");
    EXPECT_EQ(console_.err(), "");
    EXPECT_EQ(command_connection, nullptr);
    EXPECT_EQ(event_connection, nullptr);
    EXPECT_FALSE(exists("/tmp/wpa_ctrl_1-1"));
}

TEST_F(SessionBase, opens_on_a_later_try_when_the_supplicant_has_come) {
    SupplicantSession session(config_);
    EXPECT_FALSE(session.open(config_));
    const FakeSupplicant supplicant(directory_ / "wlan5");
    EXPECT_TRUE(session.open(config_));
    EXPECT_FALSE(session.isInvalid());
    session.close();
}

TEST_F(Session, whose_attach_is_refused_closes_both_connections_without_detach) {
    supplicant_.answer("ATTACH", {"FAIL\n"});
    SupplicantSession session(config_);
    EXPECT_TRUE(session.isInvalid());
    EXPECT_EQ(command_connection, nullptr);
    EXPECT_EQ(event_connection, nullptr);
    EXPECT_EQ(console_.out(),
              std::string("[WIFI]Unable to attach event socket!!\n") + closing_trace);
    EXPECT_EQ(console_.err(), "");
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH"));
}

TEST_F(Session, whose_attach_stays_unanswered_closes_after_10_seconds) {
    supplicant_.answer("ATTACH", {});
    const Stopwatch watch;
    SupplicantSession session(config_);
    EXPECT_TRUE(session.isInvalid());
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(10900)), Le(milliseconds(14000))));
    EXPECT_EQ(console_.out(),
              std::string("[WIFI]Unable to attach event socket!!\n") + closing_trace);
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH"));
}

// ---- commands ----------------------------------------------------------------------------------

TEST_F(OpenSession, accepts_a_reply_and_terminates_it) {
    supplicant_.answer("ADD_NETWORK", {"0\n"});
    EXPECT_TRUE(send("ADD_NETWORK"));
    EXPECT_EQ(reply_.length(), 2U);
    EXPECT_STREQ(reply_.c_str(), "0\n");
    EXPECT_EQ(session_->lastCommand(), "ADD_NETWORK");
    EXPECT_EQ(console_.out(), "");
    const auto received = supplicant_.received();
    EXPECT_EQ(received.back().command, "ADD_NETWORK");
    EXPECT_STREQ(received.back().sender.sun_path, command_connection->local.sun_path);
}

TEST_F(OpenSession, fails_on_a_busy_supplicant_and_keeps_the_reply_for_the_caller) {
    supplicant_.answer("SCAN", {"FAIL-BUSY\n"});
    EXPECT_TRUE(send("PING"));
    EXPECT_FALSE(send("SCAN"));
    EXPECT_STREQ(reply_.c_str(), "FAIL-BUSY\n");
    EXPECT_EQ(reply_.length(), 10U);
    EXPECT_EQ(session_->lastCommand(), "PING");
    EXPECT_EQ(console_.out(), "");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(OpenSession, judges_replies_by_what_they_contain) {
    supplicant_.answer("A", {"FAIL\n"});
    supplicant_.answer("B", {"bssid=1\nssid=MY-FAIL-SAFE\n"});
    supplicant_.answer("C", {"UNKNOWN COMMAND\n"});
    supplicant_.answer("D", {"text UNKNOWN COMMAND text"});
    supplicant_.answer("E", {"fail\nFAI L\nunknown command\nUNKNOWN  COMMAND"});
    supplicant_.answer("F", {""});
    EXPECT_FALSE(send("A"));
    EXPECT_FALSE(send("B"));
    EXPECT_STREQ(reply_.c_str(), "bssid=1\nssid=MY-FAIL-SAFE\n");
    EXPECT_FALSE(send("C"));
    EXPECT_FALSE(send("D"));
    EXPECT_EQ(session_->lastCommand(), "");
    EXPECT_TRUE(send("E"));
    EXPECT_TRUE(send("F"));
    EXPECT_STREQ(reply_.c_str(), "");
    EXPECT_EQ(session_->lastCommand(), "F");
}

TEST_F(OpenSession, cuts_a_reply_at_1247_bytes) {
    supplicant_.answer("STATUS", {std::string(2000, 'r')});
    EXPECT_TRUE(send("STATUS"));
    EXPECT_EQ(reply_.length(), 1247U);
    EXPECT_EQ(std::string(reply_.c_str()), std::string(1247, 'r'));
}

TEST_F(OpenSession, does_not_see_a_failure_behind_1247_bytes) {
    supplicant_.answer("STATUS", {std::string(1244, 'r') + "FAIL"});
    EXPECT_TRUE(send("STATUS"));
    supplicant_.answer("LIST", {std::string(1243, 'r') + "FAIL"});
    EXPECT_FALSE(send("LIST"));
}

TEST_F(OpenSession, fails_when_the_supplicant_has_died_and_terminates_at_the_capacity) {
    supplicant_.die();
    EXPECT_FALSE(send("PING"));
    EXPECT_EQ(reply_.length(), 1247U);
    EXPECT_EQ(buffer_[1247], '\0');
    EXPECT_EQ(session_->lastCommand(), "");
}

TEST_F(OpenSession, skips_events_on_the_command_connection) {
    supplicant_.answer("SCAN", {"<3>FAIL", "OK\n"});
    EXPECT_TRUE(send("SCAN"));
    EXPECT_STREQ(reply_.c_str(), "OK\n");
}

// ---- events ------------------------------------------------------------------------------------

int noted_matches = 0;

int matches_argument(const char* message, const char* argument) {
    ++noted_matches;
    return std::string_view(message).find(argument) == std::string_view::npos ? 0 : 7;
}

int matches_nothing(const char* /*message*/, const char* /*argument*/) {
    return 0;
}

int wants_no_argument(const char* message, const char* argument) {
    return argument == nullptr && std::string_view(message) == "<3>EVENT" ? 5 : -1;
}

TEST_F(OpenSession, has_no_event_once_it_is_closed) {
    session_->close();
    EXPECT_EQ(session_->waitForEvent(""), 0);
}

TEST_F(OpenSession, finds_no_event_at_once_when_none_is_queued) {
    const Stopwatch watch;
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-CONNECTED"), 0);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
}

TEST_F(OpenSession, finds_an_event_and_loses_those_before_it) {
    supplicant_.send_event("<3>CTRL-EVENT-BSS-ADDED");
    supplicant_.send_event("<3>CTRL-EVENT-SCAN-RESULTS ");
    supplicant_.send_event("<3>CTRL-EVENT-CONNECTED");
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-SCAN-RESULTS"), 1);
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-BSS-ADDED"), 0);
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-CONNECTED"), 0); // read and lost by the last wait
    EXPECT_EQ(console_.out(), "");
}

TEST_F(OpenSession, matches_the_whole_message_with_its_prefix) {
    supplicant_.send_event("<4>ABC");
    EXPECT_EQ(session_->waitForEvent("<4>A"), 1);
    supplicant_.send_event("<4>ABC");
    EXPECT_EQ(session_->waitForEvent("BC"), 1);
    supplicant_.send_event("<4>ABC");
    EXPECT_EQ(session_->waitForEvent(""), 1);
}

TEST_F(OpenSession, prints_every_message_with_debug) {
    run_options.debug = 1;
    supplicant_.send_event("<3>ONE");
    supplicant_.send_event("<3>TWO");
    supplicant_.send_event("<3>THREE");
    EXPECT_EQ(session_->waitForEvent("TWO"), 1);
    EXPECT_EQ(console_.out(), "<3>ONE\n<3>TWO\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(OpenSession, returns_what_the_matcher_says_of_the_first_message_with_the_event_text) {
    noted_matches = 0;
    supplicant_.send_event("<3>OTHER 02:00");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEvent("FOUND", matches_argument, "02:00"), 7);
    EXPECT_EQ(noted_matches, 1);
    supplicant_.send_event("<3>FOUND 02:01");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEvent("FOUND", matches_argument, "02:00"), 0);
    EXPECT_EQ(session_->waitForEvent("FOUND", matches_argument, "02:00"), 7);
    supplicant_.send_event("<3>EVENT");
    EXPECT_EQ(session_->waitForEvent("EVENT", wants_no_argument), 5);
}

TEST_F(OpenSession, cuts_an_event_at_1247_bytes_before_matching) {
    supplicant_.send_event("<3>" + std::string(1247 - 3 - 4, 'x') + "TAILTAIL");
    EXPECT_EQ(session_->waitForEvent("TAILTAIL"), 0);
    supplicant_.send_event("<3>" + std::string(1247 - 3 - 4, 'x') + "TAILTAIL");
    EXPECT_EQ(session_->waitForEvent("TAIL"), 1);
    supplicant_.send_event("<3>" + std::string(1247 - 3 - 4, 'x') + "TAIL");
    EXPECT_EQ(session_->waitForEvent("TAIL"), 1);
}

TEST_F(OpenSession, is_not_confused_by_an_earlier_longer_event) {
    supplicant_.send_event("<3>LONG TAIL TEXT");
    EXPECT_EQ(session_->waitForEvent("LONG"), 1);
    supplicant_.send_event("<3>LONG");
    EXPECT_EQ(session_->waitForEvent("TAIL"), 0);
}

TEST_F(OpenSession, passes_over_an_empty_event) {
    supplicant_.send_event("");
    supplicant_.send_event("<3>EVENT");
    EXPECT_EQ(session_->waitForEvent("EVENT"), 1);
}

TEST_F(OpenSession, names_the_first_candidate_that_the_matcher_accepts) {
    const std::array candidates{"02:00", "02:01", "02:02"};
    supplicant_.send_event("<3>OTHER 02:01");
    supplicant_.send_event("<3>FOUND 02:01 02:02");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), 1);
    EXPECT_EQ(console_.out(), "[WIFI]Testing for 02:00\n[WIFI]Testing for 02:01\n");
    EXPECT_EQ(console_.err(), "");
}

TEST_F(OpenSession, names_no_candidate_when_none_is_accepted_and_reads_no_further) {
    const std::array candidates{"02:00", "02:01"};
    supplicant_.send_event("<3>FOUND 02:07");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), -1);
    EXPECT_EQ(console_.out(), "[WIFI]Testing for 02:00\n[WIFI]Testing for 02:01\n");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), 0);
}

TEST_F(OpenSession, names_no_candidate_without_a_message_a_matcher_or_candidates) {
    const std::array candidates{"02:00"};
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), -1);
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", nullptr, candidates), -1);
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, {}), -1);
    EXPECT_EQ(console_.out(), "");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_nothing, candidates), -1);
    EXPECT_EQ(console_.out(), "[WIFI]Testing for 02:00\n");
}

TEST_F(OpenSession, prints_the_messages_of_a_candidate_wait_with_debug) {
    run_options.debug = 1;
    const std::array candidates{"02:00"};
    supplicant_.send_event("<3>OTHER");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), 0);
    EXPECT_EQ(console_.out(), "<3>OTHER\n<3>FOUND 02:00\n[WIFI]Testing for 02:00\n");
}

// ---- status probes -----------------------------------------------------------------------------

class StatusProbe : public OpenSession {
protected:
    bool probe_wlan() {
        buffer_.fill('#');
        return session_->checkWlanStatus(config_, reply_);
    }
    bool probe_p2p() {
        buffer_.fill('#');
        return session_->checkP2pStatus(config_, reply_);
    }
};

TEST_F(StatusProbe, asks_wlan0_on_a_connection_that_stays_open) {
    FakeSupplicant wlan0(directory_ / "wlan0");
    wlan0.answer("STATUS", {"wpa_state=COMPLETED\n"});
    EXPECT_TRUE(probe_wlan());
    EXPECT_STREQ(reply_.c_str(), "wpa_state=COMPLETED\n");
    EXPECT_EQ(reply_.length(), 20U);
    EXPECT_EQ(console_.out(), "wpa_state=COMPLETED\n\n");
    EXPECT_EQ(console_.err(), "");
    ASSERT_EQ(wlan0.received().size(), 1U);
    EXPECT_EQ(wlan0.received()[0].command, "STATUS");
    EXPECT_TRUE(exists(wlan0.received()[0].sender.sun_path));
    EXPECT_FALSE(session_->isInvalid());
    EXPECT_EQ(session_->lastCommand(), "");
}

TEST_F(StatusProbe, asks_p2p0_for_the_peer_to_peer_status) {
    FakeSupplicant p2p0(directory_ / "p2p0");
    p2p0.answer("STATUS", {"wpa_state=DISCONNECTED\n"});
    EXPECT_TRUE(probe_p2p());
    EXPECT_EQ(console_.out(), "wpa_state=DISCONNECTED\n\n");
    EXPECT_THAT(p2p0.commands(), ElementsAre("STATUS"));
}

TEST_F(StatusProbe, that_cannot_connect_says_so_for_both_interfaces_alike) {
    EXPECT_FALSE(probe_wlan());
    EXPECT_EQ(console_.err(), "Unable to check wlan staus.\n");
    EXPECT_EQ(console_.out(), "");
    EXPECT_FALSE(probe_p2p());
    EXPECT_EQ(console_.err(), "Unable to check wlan staus.\n");
    EXPECT_EQ(console_.out(), "");
}

TEST_F(StatusProbe, that_is_refused_prints_the_reply_and_closes_its_connection) {
    FakeSupplicant wlan0(directory_ / "wlan0");
    wlan0.answer("STATUS", {"UNKNOWN COMMAND\n"});
    EXPECT_FALSE(probe_wlan());
    EXPECT_EQ(console_.out(),
              "UNKNOWN COMMAND\n\n"
              "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n");
    EXPECT_FALSE(exists(wlan0.received()[0].sender.sun_path));
    wlan0.answer("STATUS", {"ssid=FAILSAFE\n"});
    EXPECT_FALSE(probe_wlan());
}

TEST_F(StatusProbe, can_be_repeated_thousands_of_times) {
    const FakeSupplicant wlan0(directory_ / "wlan0");
    for (int i = 0; i < 3000; ++i) {
        ASSERT_TRUE(probe_wlan()) << i;
    }
    console_.out();
}

} // namespace
} // namespace wivex

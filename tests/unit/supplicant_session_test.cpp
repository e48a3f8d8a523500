// SPDX-License-Identifier: Apache-2.0
// A session with the supplicant: how it opens and closes, what it makes of replies, and the probes
// of the interfaces' status.

#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "common/shell.hpp"
#include "common/unique_fd.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "session_fixture.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class SessionWithoutASupplicant : public ControlSocketFixture {};

class Session : public SupplicantFixture {};

class OpenSession : public SessionFixture {
protected:
    bool send(const char* command) {
        make_room();
        return session_->sendCommand(command, reply_);
    }

    void make_room() {
        buffer_.fill('#');
    }

    ReplyBuffer buffer_{};
    Reply reply_{buffer_};
};

// ---- opening and closing -----------------------------------------------------------------------

TEST_F(Session, opens_two_connections_and_attaches_the_second_a_second_later) {
    const Stopwatch watch;
    SupplicantSession session(config_);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(950)), Lt(milliseconds(1950))));
    EXPECT_FALSE(session.isInvalid());
    ASSERT_NE(command_connection, nullptr);
    ASSERT_NE(event_connection, nullptr);
    EXPECT_NE(command_connection, event_connection);
    const auto received = supplicant_.received();
    ASSERT_EQ(received.size(), 1U);
    EXPECT_EQ(received[0].command, "ATTACH");
    EXPECT_STREQ(received[0].sender.sun_path, event_connection->local.sun_path);
    EXPECT_EQ(session.lastCommand(), "");
    EXPECT_THAT(console_.streams(), Pair("", ""));
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
    create_file("/tmp/wpa_ctrl_1-1");
    const Stopwatch watch;
    EXPECT_TRUE(session_->open(config_));
    EXPECT_LT(watch.elapsed(), milliseconds(900));
    EXPECT_EQ(command_connection, command_before);
    EXPECT_FALSE(exists("/tmp/wpa_ctrl_1-1"));
    EXPECT_FALSE(exists(name));
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH"));
}

TEST_F(SessionWithoutASupplicant, stays_closed) {
    create_file("/tmp/wpa_ctrl_1-1");
    SupplicantSession session(config_);
    EXPECT_TRUE(session.isInvalid());
    EXPECT_THAT(console_.streams(), Pair("[WIFI]Unable to open sockets!!\n", ""));
    EXPECT_EQ(command_connection, nullptr);
    EXPECT_EQ(event_connection, nullptr);
    EXPECT_FALSE(exists("/tmp/wpa_ctrl_1-1"));
}

TEST_F(SessionWithoutASupplicant, opens_on_a_later_try_when_one_has_come) {
    SupplicantSession session(config_);
    EXPECT_FALSE(session.open(config_));
    const FakeSupplicant supplicant(control_path());
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
    EXPECT_FALSE(session.open(config_));
}

TEST_F(Session, whose_attach_stays_unanswered_closes_after_10_seconds) {
    supplicant_.answer("ATTACH", {});
    const Stopwatch watch;
    SupplicantSession session(config_);
    EXPECT_TRUE(session.isInvalid());
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(10900)), Le(milliseconds(19000))));
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
    EXPECT_THAT(console_.streams(), Pair("", ""));
}

TEST_F(OpenSession, judges_replies_by_what_they_contain) {
    supplicant_.answer("A", {"FAIL\n"});
    supplicant_.answer("B", {"bssid=1\nssid=MY-FAIL-SAFE\n"});
    supplicant_.answer("C", {"UNKNOWN COMMAND\n"});
    supplicant_.answer("D", {"text UNKNOWN COMMAND text"});
    supplicant_.answer("E", {"fail\nFAI L\nMAIL\nunknown command\nUNKNOWN  COMMAND"});
    supplicant_.answer("F", {""});
    supplicant_.answer("G", {"ANKNOWN COMMAND\nUNKNOWN COMMANS"});
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
    EXPECT_TRUE(send("G"));
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

// ---- status probes -----------------------------------------------------------------------------

class StatusProbe : public OpenSession {
protected:
    bool probe_wlan() {
        make_room();
        return session_->checkWlanStatus(config_, reply_);
    }
    bool probe_p2p() {
        make_room();
        return session_->checkP2pStatus(config_, reply_);
    }
    /// Whether a socket of this name is open: nobody but its peer may send to it, nobody at all
    /// when it is closed.
    bool is_open(const sockaddr_un& name) const {
        const auto* const address = reinterpret_cast<const sockaddr*>(&name);
        return ::sendto(stranger_.get(), "", 0, 0, address, sizeof(name)) < 0 && errno == EPERM;
    }

    const UniqueFd stranger_{::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)};
};

TEST_F(StatusProbe, asks_wlan0_on_a_connection_that_stays_open) {
    FakeSupplicant wlan0(directory_ / "wlan0");
    wlan0.answer("STATUS", {"wpa_state=COMPLETED\n"});
    EXPECT_TRUE(probe_wlan());
    EXPECT_STREQ(reply_.c_str(), "wpa_state=COMPLETED\n");
    EXPECT_EQ(reply_.length(), 20U);
    EXPECT_THAT(console_.streams(), Pair("wpa_state=COMPLETED\n\n", ""));
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

TEST_F(StatusProbe, leaves_its_last_eight_connections_open_and_closes_older_ones) {
    const FakeSupplicant wlan0(directory_ / "wlan0");
    for (int i = 0; i < 10; ++i) {
        ASSERT_TRUE(probe_wlan());
    }
    const auto probes = wlan0.received();
    ASSERT_EQ(probes.size(), 10U);
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(is_open(probes[i].sender), i >= 2) << i;
    }
    console_.out();
}

TEST_F(StatusProbe, that_cannot_connect_says_so_for_both_interfaces_alike) {
    EXPECT_FALSE(probe_wlan());
    EXPECT_THAT(console_.streams(), Pair("", "Unable to check wlan staus.\n"));
    EXPECT_FALSE(probe_p2p());
    EXPECT_THAT(console_.streams(), Pair("", "Unable to check wlan staus.\n"));
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

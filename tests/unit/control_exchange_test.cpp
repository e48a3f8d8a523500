// SPDX-License-Identifier: Apache-2.0
// What goes over a control connection: requests and replies, attaching, events.

#include "children.hpp"
#include "common/process_state.hpp"
#include "control_connection.hpp"
#include "made_up_clock.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;
using std::chrono::seconds;

class ControlExchange : public ControlClient {
protected:
    void SetUp() override {
        ControlClient::SetUp();
        events_passed_.clear();
        ctrl_ = open();
        ASSERT_NE(ctrl_, nullptr);
    }

    Exchange ask(std::string_view command, std::size_t room = 16,
                 EventCallback callback = nullptr) {
        return request(*ctrl_, command, room, callback);
    }

    static void note_event(const char* message, std::size_t length) {
        EXPECT_EQ(std::string(message).size(), length);
        events_passed_.emplace_back(message);
    }

    static inline std::vector<std::string> events_passed_;
    Connection ctrl_;
};

// ---- requests ----------------------------------------------------------------------------------

TEST_F(ControlExchange, sends_exactly_the_bytes_of_the_command_and_returns_the_reply) {
    supplicant_.answer("SET_NETWORK 0 ssid \"home\"", {"OK\n"});
    const Exchange exchange = ask("SET_NETWORK 0 ssid \"home\"", 10);
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.length, 3U);
    EXPECT_EQ(exchange.buffer, "OK\n########");
    EXPECT_THAT(supplicant_.commands(), ElementsAre("SET_NETWORK 0 ssid \"home\""));
}

TEST_F(ControlExchange, sends_an_empty_command_too) {
    supplicant_.answer("", {"UNKNOWN COMMAND\n"});
    EXPECT_EQ(ask("", 32).text(), "UNKNOWN COMMAND\n");
}

TEST_F(ControlExchange, cuts_a_reply_at_the_room_that_is_there) {
    supplicant_.answer("STATUS", {std::string(3000, 'r')});
    const Exchange exchange = ask("STATUS", 100);
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.length, 100U);
    EXPECT_EQ(exchange.buffer, std::string(100, 'r') + "#");
}

TEST_F(ControlExchange, takes_an_empty_datagram_as_the_reply) {
    supplicant_.answer("STATUS", {"", "<3>later"});
    const Exchange exchange = ask("STATUS");
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.length, 0U);
}

TEST_F(ControlExchange, takes_an_empty_datagram_behind_an_event_as_the_reply) {
    supplicant_.answer("STATUS", {"<3>EVENT", "", "later"});
    const Exchange exchange = ask("STATUS");
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.length, 0U);
}

TEST_F(ControlExchange, takes_a_lone_angle_bracket_for_an_event) {
    supplicant_.answer("STATUS", {"<", "OK\n"});
    EXPECT_EQ(ask("STATUS").text(), "OK\n");
}

TEST_F(ControlExchange, skips_events_that_come_before_the_reply) {
    supplicant_.answer("SCAN", {"<3>CTRL-EVENT-BSS-ADDED 1", "<2>MORE", "OK\n"});
    const Exchange exchange = ask("SCAN", 64);
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.text(), "OK\n");
}

TEST_F(ControlExchange, passes_events_that_come_before_the_reply_to_the_callback) {
    supplicant_.answer("SCAN", {"<3>FIRST", "<3>SECOND", "OK\n"});
    const Exchange exchange = ask("SCAN", 64, note_event);
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.text(), "OK\n");
    EXPECT_THAT(events_passed_, ElementsAre("<3>FIRST", "<3>SECOND"));
}

TEST_F(ControlExchange, passes_an_event_that_fills_the_buffer_with_its_last_byte_cut) {
    supplicant_.answer("SCAN", {"<3>" + std::string(100, 'e'), "OK\n"});
    const Exchange exchange = ask("SCAN", 20, note_event);
    EXPECT_EQ(exchange.status, 0);
    EXPECT_THAT(events_passed_, ElementsAre("<3>" + std::string(16, 'e')));
    EXPECT_EQ(exchange.length, 3U);
    EXPECT_EQ(exchange.buffer[20], '#');
}

TEST_F(ControlExchange, fails_at_once_when_the_supplicant_is_gone) {
    supplicant_.die();
    const Stopwatch watch;
    const Exchange exchange = ask("PING");
    EXPECT_EQ(exchange.status, -1);
    EXPECT_LT(watch.elapsed(), milliseconds(1500));
    EXPECT_EQ(exchange.length, 16U);
}

TEST_F(ControlExchange, fails_when_there_is_no_place_for_the_reply) {
    std::size_t length = 10;
    EXPECT_EQ(wpa_ctrl_request(*ctrl_, "PING", nullptr, length), -1);
    EXPECT_EQ(length, 10U);
}

TEST_F(ControlExchange, fails_when_an_interrupt_that_is_not_the_end_comes_during_its_wait) {
    supplicant_.answer("PING", {});
    const auto ask_once = [this] { ::_exit(ask("PING").status == -1 ? 7 : 8); };
    EXPECT_EQ(end_of_interrupted(SIGINT, ask_once, [](int) {}), 7);
}

TEST_F(ControlExchange, leaves_no_error_number_of_earlier_times_behind) {
    errno = EIO;
    const int status = ask("PING").status;
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(ControlExchange, gives_up_on_a_silent_supplicant_after_10_seconds) {
    supplicant_.answer("PING", {});
    const Stopwatch watch;
    const auto processor_before = processor_time();
    const Exchange exchange = ask("PING");
    EXPECT_EQ(exchange.status, -2);
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(9900)), Le(milliseconds(19000))));
    EXPECT_EQ(exchange.length, 16U);
    EXPECT_LT(processor_time() - processor_before, milliseconds(100));
}

TEST_F(ControlExchange, waits_another_10_seconds_after_each_event) {
    supplicant_.answer("ATTACH", {"OK\n"});
    supplicant_.answer("SCAN", {"<3>FIRST"}, milliseconds(5500));
    supplicant_.event_after("SCAN", "LATE\n", milliseconds(5500));
    ASSERT_EQ(wpa_ctrl_attach(*ctrl_), 0);
    const Stopwatch watch;
    const Exchange exchange = ask("SCAN");
    EXPECT_EQ(exchange.status, 0);
    EXPECT_EQ(exchange.text(), "LATE\n");
    EXPECT_GE(watch.elapsed(), milliseconds(10900));
}

class BusySupplicant : public ControlSocket {
protected:
    void SetUp() override {
        ControlSocket::SetUp();
        server_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        control_path().copy(address.sun_path, sizeof(address.sun_path) - 1);
        ASSERT_EQ(::bind(server_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        ctrl_.reset(wpa_ctrl_open(control_path().c_str()));
        ASSERT_NE(ctrl_, nullptr);
        while (::send(ctrl_->socket, "FILL", 4, MSG_DONTWAIT) == 4) {
        }
    }
    void TearDown() override {
        ctrl_.reset();
        ::close(server_);
        ControlSocket::TearDown();
    }

    int server_ = -1;
    Connection ctrl_;
};

TEST_F(BusySupplicant, is_tried_again_once_a_second_for_more_than_5_seconds) {
    const MadeUpClock clock;
    EXPECT_EQ(request(*ctrl_, "PING").status, -1);
    EXPECT_THAT(clock.story(), ElementsAre("sleeps 1 s", "sleeps 1 s", "sleeps 1 s", "sleeps 1 s",
                                           "sleeps 1 s", "sleeps 1 s"));
}

TEST_F(BusySupplicant, gets_the_command_as_soon_as_a_try_finds_room) {
    std::jthread reader([this] {
        std::this_thread::sleep_for(milliseconds(100));
        for (;;) {
            std::array<char, 16> command{};
            sockaddr_un client{};
            socklen_t client_length = sizeof(client);
            const ssize_t length = ::recvfrom(server_, command.data(), command.size(), 0,
                                              reinterpret_cast<sockaddr*>(&client), &client_length);
            if (std::string(command.data(), static_cast<std::size_t>(length)) == "PING") {
                ::sendto(server_, "PONG\n", 5, 0, reinterpret_cast<const sockaddr*>(&client),
                         client_length);
                return;
            }
        }
    });
    const Stopwatch watch;
    const Exchange ping = request(*ctrl_, "PING");
    EXPECT_EQ(ping.status, 0);
    EXPECT_EQ(ping.text(), "PONG\n");
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(950)), Lt(milliseconds(1950))));
}

// ---- attaching ---------------------------------------------------------------------------------

TEST_F(ControlExchange, attaches_and_detaches_with_an_OK_line) {
    EXPECT_EQ(wpa_ctrl_attach(*ctrl_), 0);
    EXPECT_EQ(wpa_ctrl_detach(*ctrl_), 0);
    EXPECT_THAT(supplicant_.commands(), ElementsAre("ATTACH", "DETACH"));
}

class AttachReply : public ControlExchange, public WithParamInterface<std::string> {};

TEST_P(AttachReply, that_is_not_exactly_OK_fails) {
    supplicant_.answer("ATTACH", {GetParam()});
    supplicant_.answer("DETACH", {GetParam()});
    EXPECT_EQ(wpa_ctrl_attach(*ctrl_), -1);
    EXPECT_EQ(wpa_ctrl_detach(*ctrl_), -1);
}

INSTANTIATE_TEST_SUITE_P(Texts, AttachReply,
                         Values("OK", "OK\n\n", "OK\nOK\n", "ok\n", "FAIL\n", "",
                                "OK\n and a long text behind it", "KO\n"),
                         [](const auto& text) { return "text_" + std::to_string(text.index); });

TEST_F(ControlExchange, attaches_although_an_event_comes_first) {
    supplicant_.answer("ATTACH", {"<3>EVENT-LONGER-THAN-THE-BUFFER", "OK\n"});
    EXPECT_EQ(wpa_ctrl_attach(*ctrl_), 0);
}

TEST_F(ControlExchange, passes_the_failure_of_a_request_through_attach) {
    supplicant_.die();
    EXPECT_EQ(wpa_ctrl_attach(*ctrl_), -1);
}

// ---- receiving ---------------------------------------------------------------------------------

TEST_F(ControlExchange, receives_nothing_at_once_when_nothing_is_there) {
    const Stopwatch watch;
    const Exchange nothing = receive(*ctrl_, 7);
    EXPECT_EQ(nothing.status, -1);
    EXPECT_EQ(nothing.length, 7U);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
    EXPECT_FALSE(wpa_ctrl_pending(*ctrl_));
}

TEST_F(ControlExchange, receives_one_message_after_the_other) {
    ASSERT_EQ(wpa_ctrl_attach(*ctrl_), 0);
    supplicant_.send_event("<3>ONE");
    supplicant_.send_event("<3>AND TWO");
    EXPECT_TRUE(wpa_ctrl_pending(*ctrl_));
    const Exchange whole = receive(*ctrl_, 16);
    EXPECT_EQ(whole.status, 0);
    EXPECT_EQ(whole.length, 6U);
    EXPECT_EQ(whole.buffer, "<3>ONE###########");
    const Exchange cut = receive(*ctrl_, 5);
    EXPECT_EQ(cut.status, 0);
    EXPECT_EQ(cut.length, 5U);
    EXPECT_EQ(cut.buffer, "<3>AN#");
    EXPECT_FALSE(wpa_ctrl_pending(*ctrl_));
}

} // namespace
} // namespace wivex

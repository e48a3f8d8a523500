// SPDX-License-Identifier: Apache-2.0
// What a session makes of the events that are queued.

#include "children.hpp"
#include "common/interrupts.hpp"
#include "common/process_state.hpp"
#include "common/unique_fd.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <string>
#include <string_view>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

class SessionEvents : public SessionFixture {};

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

TEST_F(SessionEvents, has_no_event_once_it_is_closed) {
    session_->close();
    EXPECT_EQ(session_->waitForEvent(""), 0);
}

TEST_F(SessionEvents, finds_no_event_at_once_when_none_is_queued) {
    const Stopwatch watch;
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-CONNECTED"), 0);
    EXPECT_LT(watch.elapsed(), milliseconds(900));
}

TEST_F(SessionEvents, finds_an_event_and_loses_those_before_it) {
    supplicant_.send_event("<3>CTRL-EVENT-BSS-ADDED");
    supplicant_.send_event("<3>CTRL-EVENT-SCAN-RESULTS ");
    supplicant_.send_event("<3>CTRL-EVENT-CONNECTED");
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-SCAN-RESULTS"), 1);
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-BSS-ADDED"), 0);
    EXPECT_EQ(session_->waitForEvent("CTRL-EVENT-CONNECTED"), 0); // read and lost by the last wait
    EXPECT_EQ(console_.out(), "");
}

TEST_F(SessionEvents, matches_the_whole_message_with_its_prefix) {
    supplicant_.send_event("<4>ABC");
    EXPECT_EQ(session_->waitForEvent("<4>A"), 1);
    supplicant_.send_event("<4>ABC");
    EXPECT_EQ(session_->waitForEvent("BC"), 1);
    supplicant_.send_event("<4>ABC");
    EXPECT_EQ(session_->waitForEvent(""), 1);
}

TEST_F(SessionEvents, prints_every_message_with_debug) {
    run_options.debug = 1;
    supplicant_.send_event("<3>ONE");
    supplicant_.send_event("<3>TWO");
    supplicant_.send_event("<3>THREE");
    EXPECT_EQ(session_->waitForEvent("TWO"), 1);
    EXPECT_THAT(console_.streams(), Pair("<3>ONE\n<3>TWO\n", ""));
}

TEST_F(SessionEvents, returns_what_the_matcher_says_of_the_first_message_with_the_event_text) {
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

TEST_F(SessionEvents, cuts_an_event_at_1247_bytes_before_matching) {
    supplicant_.send_event("<3>" + std::string(1247 - 3 - 4, 'x') + "TAILTAIL");
    EXPECT_EQ(session_->waitForEvent("TAILTAIL"), 0);
    supplicant_.send_event("<3>" + std::string(1247 - 3 - 4, 'x') + "TAILTAIL");
    EXPECT_EQ(session_->waitForEvent("TAIL"), 1);
    supplicant_.send_event("<3>" + std::string(1247 - 3 - 4, 'x') + "TAIL");
    EXPECT_EQ(session_->waitForEvent("TAIL"), 1);
}

TEST_F(SessionEvents, is_not_confused_by_an_earlier_longer_event) {
    supplicant_.send_event("<3>LONG TAIL TEXT");
    EXPECT_EQ(session_->waitForEvent("LONG"), 1);
    supplicant_.send_event("<3>LONG");
    EXPECT_EQ(session_->waitForEvent("TAIL"), 0);
}

TEST_F(SessionEvents, ends_an_event_where_it_ends_behind_a_longer_one) {
    supplicant_.send_event("<3>OTHER OF MORE WORDS");
    supplicant_.send_event("<3>EVENT");
    EXPECT_EQ(session_->waitForEvent("EVENT", wants_no_argument), 5);
}

TEST_F(SessionEvents, passes_over_an_empty_event) {
    supplicant_.send_event("");
    supplicant_.send_event("<3>EVENT");
    EXPECT_EQ(session_->waitForEvent("EVENT"), 1);
}

TEST_F(SessionEvents, names_the_first_candidate_that_the_matcher_accepts) {
    const std::array candidates{"02:00", "02:01", "02:02"};
    supplicant_.send_event("<3>OTHER 02:01");
    supplicant_.send_event("<3>FOUND 02:01 02:02");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), 1);
    EXPECT_THAT(console_.streams(), Pair("[WIFI]Testing for 02:00\n[WIFI]Testing for 02:01\n", ""));
}

TEST_F(SessionEvents, names_no_candidate_when_none_is_accepted_and_reads_no_further) {
    const std::array candidates{"02:00", "02:01"};
    supplicant_.send_event("<3>FOUND 02:07");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), -1);
    EXPECT_EQ(console_.out(), "[WIFI]Testing for 02:00\n[WIFI]Testing for 02:01\n");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), 0);
}

TEST_F(SessionEvents, names_no_candidate_without_a_message_a_matcher_or_candidates) {
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

TEST_F(SessionEvents, prints_the_messages_of_a_candidate_wait_with_debug) {
    run_options.debug = 1;
    const std::array candidates{"02:00"};
    supplicant_.send_event("<3>OTHER");
    supplicant_.send_event("<3>FOUND 02:00");
    EXPECT_EQ(session_->waitForEventAny("FOUND", matches_argument, candidates), 0);
    EXPECT_EQ(console_.out(), "<3>OTHER\n<3>FOUND 02:00\n[WIFI]Testing for 02:00\n");
}

// The queue of a datagram socket holds fewer messages than it takes here.
TEST_F(SessionEvents, let_an_interrupt_in_after_64_of_them) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK, 0, ends.data()), 0);
    const UniqueFd reader(ends[0]);
    const UniqueFd writer(ends[1]);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(::send(writer.get(), "<3>OTHER", 8, 0), 8);
    }
    const int child = fork_child([&] {
        ::dup2(reader.get(), wpa_ctrl_get_fd(*event_connection));
        install_interrupt_handler(exit_by_signal);
        ::raise(SIGINT);
        return session_->waitForEvent("AWAITED");
    });
    EXPECT_EQ(end_of_child(child, milliseconds(2000)), 50);
    int left = 0;
    for (char first = 0; ::recv(reader.get(), &first, 1, 0) == 1; ++left) {
    }
    EXPECT_EQ(left, 36);
}

} // namespace
} // namespace wivex

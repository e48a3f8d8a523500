// SPDX-License-Identifier: Apache-2.0
#include "ctrl/event_wait.hpp"
#include "session_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <string_view>
#include <thread>
#include <vector>

namespace wivex {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;
using namespace test_support;
using namespace testing;

class EventWait : public SessionFixture {};

int contains(const char* message, const char* argument) {
    return std::string_view(message).find(argument) == std::string_view::npos ? 0 : 1;
}

TEST_F(EventWait, ends_with_the_event) {
    supplicant_.send_event("<3>OTHER");
    supplicant_.send_event("<3>AWAITED");
    DeadlineTimer timer;
    timer.start(5);
    EXPECT_TRUE(await_event(*session_, timer, "AWAITED"));
}

TEST_F(EventWait, ends_with_the_deadline_counted_in_whole_seconds) {
    DeadlineTimer timer;
    timer.start(2);
    const Stopwatch watch;
    EXPECT_FALSE(await_event(*session_, timer, "AWAITED"));
    EXPECT_THAT(watch.elapsed(), AllOf(Ge(milliseconds(950)), Le(milliseconds(3000))));
}

TEST_F(EventWait, goes_on_after_events_that_do_not_match) {
    DeadlineTimer timer;
    timer.start(10);
    std::jthread sender([this] {
        for (int i = 0; i < 20; ++i) {
            supplicant_.send_event("<3>FOUND 02:01");
        }
        supplicant_.send_event("<3>FOUND 02:00");
    });
    EXPECT_TRUE(await_event(*session_, timer, "FOUND", contains, "02:00"));
}

TEST_F(EventWait, is_not_confused_by_a_flood_of_other_events) {
    constexpr int flood = 10000;
    DeadlineTimer timer;
    timer.start(20);
    std::jthread sender([this] {
        for (int i = 0; i < flood; ++i) {
            supplicant_.send_event("<3>CTRL-EVENT-BSS-ADDED 1 02:00");
        }
        supplicant_.send_event("<3>AWAITED");
    });
    EXPECT_TRUE(await_event(*session_, timer, "AWAITED"));
}

TEST_F(EventWait, ends_at_its_deadline_during_a_flood_that_never_ends) {
    std::atomic<bool> stop = false;
    std::jthread sender([&] {
        while (!stop) {
            supplicant_.send_event("<3>CTRL-EVENT-BSS-ADDED 1 02:00");
        }
    });
    DeadlineTimer timer;
    timer.start(1);
    const Stopwatch watch;
    EXPECT_FALSE(await_event(*session_, timer, "AWAITED"));
    EXPECT_LT(watch.elapsed(), milliseconds(2500));
    stop = true;
    while (session_->waitForEvent("BSS-ADDED") != 0) { // so that the sender can end
    }
}

TEST_F(EventWait, without_a_deadline_ends_only_with_the_event) {
    std::jthread sender([this] {
        std::this_thread::sleep_for(milliseconds(2500));
        supplicant_.send_event("<3>AWAITED");
    });
    const Stopwatch watch;
    await_event_forever(*session_, "AWAITED");
    EXPECT_GE(watch.elapsed(), milliseconds(2490));
}

TEST_F(EventWait, stays_quiet_when_the_supplicant_has_died) {
    supplicant_.die();
    DeadlineTimer timer;
    timer.start(3);
    const auto before = test_support::processor_time();
    EXPECT_FALSE(await_event(*session_, timer, "AWAITED"));
    EXPECT_LT(test_support::processor_time() - before, milliseconds(20));
}

TEST_F(EventWait, names_the_candidate) {
    const std::array candidates{"02:00", "02:01"};
    DeadlineTimer timer;
    timer.start(5);
    std::jthread sender([this] {
        supplicant_.send_event("<3>FOUND 02:09");
        std::this_thread::sleep_for(milliseconds(100));
        supplicant_.send_event("<3>FOUND 02:01");
    });
    EXPECT_EQ(await_event_any(*session_, timer, "FOUND", contains, candidates), 1);
}

TEST_F(EventWait, names_the_first_candidate_by_0) {
    const std::array candidates{"02:00", "02:01"};
    DeadlineTimer timer;
    timer.start(5);
    supplicant_.send_event("<3>FOUND 02:00");
    supplicant_.send_event("<3>FOUND 02:01");
    EXPECT_EQ(await_event_any(*session_, timer, "FOUND", contains, candidates), 0);
    EXPECT_EQ(await_event_any(*session_, timer, "FOUND", contains, candidates), 1);
}

TEST_F(EventWait, names_no_candidate_at_the_deadline_and_stays_quiet_until_then) {
    const std::array candidates{"02:00"};
    DeadlineTimer timer;
    timer.start(2);
    const auto before = test_support::processor_time();
    EXPECT_EQ(await_event_any(*session_, timer, "FOUND", contains, candidates), -1);
    EXPECT_LT(test_support::processor_time() - before, milliseconds(100));
}

TEST_F(EventWait, acts_on_an_event_within_a_millisecond_at_the_median) {
    constexpr std::size_t rounds = 101;
    std::vector<microseconds> reactions;
    for (std::size_t round = 0; round < rounds; ++round) {
        steady_clock::time_point sent;
        std::jthread sender([&] {
            std::this_thread::sleep_for(milliseconds(10));
            sent = steady_clock::now();
            supplicant_.send_event("<3>AWAITED");
        });
        await_event_forever(*session_, "AWAITED");
        const auto seen = steady_clock::now();
        sender.join();
        reactions.push_back(std::chrono::duration_cast<microseconds>(seen - sent));
    }
    std::nth_element(reactions.begin(), reactions.begin() + rounds / 2, reactions.end());
    EXPECT_LT(reactions[rounds / 2], microseconds(1000));
}

} // namespace
} // namespace wivex

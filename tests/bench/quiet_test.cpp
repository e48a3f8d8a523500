// SPDX-License-Identifier: Apache-2.0
// What waiting costs, how fast it ends, and how output reaches a reader meanwhile.

#include "bench_run.hpp"
#include "expected.hpp"
#include "language/files.hpp"
#include "text_parts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace bench_test {
namespace {

using std::chrono::milliseconds;
using namespace testing;

TEST(QuietWait, of_60_seconds_for_an_event_costs_less_than_50_ms_of_processor_time) {
    const BenchRun run = run_wlan(Bench("scan-never-ends").signal("INT@61500ms"));
    EXPECT_EQ(run.status, 0);
    EXPECT_GT(run.wall_ms, 61000);
    EXPECT_LT(run.processor_ms, 50);
}

TEST(QuietWait, with_a_deadline_costs_next_to_nothing_too) {
    const BenchRun run = run_wlan(Bench("connection-never-comes"));
    EXPECT_GT(run.wall_ms, 31000);
    EXPECT_LT(run.processor_ms, 50);
}

TEST(QuietWait, for_a_reply_costs_next_to_nothing_too) {
    const BenchRun run = run_wlan(Bench("supplicant-never-answers"));
    EXPECT_GT(run.wall_ms, 12000);
    EXPECT_LT(run.processor_ms, 50);
}

/// How late this machine wakes those who sleep, all the while: three of four are woken earlier than
/// that.
class Lateness {
public:
    long long in_us() {
        thread_.request_stop();
        thread_.join();
        std::sort(late_us_.begin(), late_us_.end());
        return late_us_.at(late_us_.size() * 3 / 4);
    }

private:
    void watch(const std::stop_token& end) {
        while (!end.stop_requested()) {
            const auto due = std::chrono::steady_clock::now() + milliseconds(20);
            std::this_thread::sleep_until(due);
            const auto late = std::chrono::steady_clock::now() - due;
            late_us_.push_back(std::chrono::duration_cast<std::chrono::microseconds>(late).count());
        }
    }

    std::vector<long long> late_us_;
    std::jthread thread_{[this](const std::stop_token& end) { watch(end); }};
};

// Three wake up in turn: the supplicant, the tool, and the supplicant that notes the time. A tool
// that looked every ten milliseconds would be later in most of the iterations; a machine at work
// makes many of them late.
TEST(QuietWait, ends_within_a_millisecond_of_the_event_in_a_quarter_of_the_iterations_at_least) {
    Lateness lateness;
    constexpr long long delay_us = 20'000;
    const BenchRun run =
        run_wlan(Bench("scan-results-refused")
                     .line("supplicant withholds \"CTRL-EVENT-SCAN-RESULTS\"")
                     .line("supplicant sends \"<3>CTRL-EVENT-SCAN-RESULTS \" on \"SCAN\" "
                           "after 20ms"),
                 15);
    std::vector<long long> reactions;
    const auto commands = run.timed_commands();
    for (std::size_t index = 1; index < commands.size(); ++index) {
        if (commands[index].second == "SCAN_RESULTS") {
            reactions.push_back(commands[index].first - commands[index - 1].first - delay_us);
        }
    }
    ASSERT_EQ(reactions.size(), 15U);
    std::sort(reactions.begin(), reactions.end());
    EXPECT_GE(reactions.front(), 0);
    EXPECT_LT(reactions[reactions.size() / 4], 1000 + 3 * lateness.in_us());
}

// ---- descriptors -------------------------------------------------------------------------------

TEST(ManyDescriptors, above_1023_are_as_good_as_any) {
    const BenchRun run = run_wlan(Bench().line(quick_address).open_descriptors(1100));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 8 passed \n");
}

TEST(ManyDescriptors, above_1023_do_not_disturb_an_interrupt) {
    const BenchRun run =
        run_wlan(Bench("scan-never-ends").open_descriptors(1100).signal("INT@command:SCAN+500ms"));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, EndsWith(interrupted + cleanup_of_a_session + done));
    EXPECT_LT(run.wall_ms, 9000);
}

// ---- output ------------------------------------------------------------------------------------

TEST(LiveOutput, reaches_a_pipe_line_by_line) {
    const auto run = Bench("scan-never-ends").signal("INT@4000ms").args({"-w", "-m", "1"}).start();
    EXPECT_TRUE(run->shows("[WIFI]WIFI DRIVER READY\n", milliseconds(3500)));
    EXPECT_EQ(run->finish().status, 0);
}

TEST(LiveOutput, reaches_a_file_line_by_line) {
    const std::string path = "/tmp/wivex-live-output-" + std::to_string(::getpid());
    const auto run = Bench("scan-never-ends")
                         .out_file(path)
                         .signal("INT@4000ms")
                         .args({"-w", "-m", "1"})
                         .start();
    const auto end = std::chrono::steady_clock::now() + milliseconds(3500);
    while (bench::read_file(path) != start + checks && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(milliseconds(50));
    }
    EXPECT_EQ(bench::read_file(path).value_or(""), start + checks);
    EXPECT_EQ(run->finish().status, 0);
    EXPECT_EQ(bench::read_file(path).value_or(""),
              start + checks + interrupted + cleanup_of_a_session + done);
    ::unlink(path.c_str());
}

TEST(LiveOutput, stands_before_the_output_of_the_tool_that_it_announces) {
    const BenchRun run = Bench()
                             .line("program udhcpc runs \"echo the client; exit 0\"")
                             .line("program killall runs \"echo the end of $1; exit 0\"")
                             .args({"-w", "-m", "1"})
                             .run();
    EXPECT_THAT(run.out, HasSubstr("Executing dhclient...\nudhcpc -i wlan0 --now.\nthe client\n"
                                   "the end of udhcpc\nCommand to udhcpc is successful...\n"));
}

TEST(LiveOutput, waits_for_a_slow_reader_without_losing_anything) {
    constexpr int events = 4000;
    const auto run = Bench()
                         .line(quick_address)
                         .line("supplicant withholds \"CTRL-EVENT-CONNECTED\"")
                         .line("supplicant sends \"<3>UNRELATED-EVENT-TO-FILL-THE-PIPE\" " +
                               std::to_string(events) + " times on \"SELECT_NETWORK 0 \"")
                         .line("supplicant sends \"<3>CTRL-EVENT-CONNECTED\" on "
                               "\"SELECT_NETWORK 0 \" after 1ms")
                         .args({"-w", "-u", "-m", "1"})
                         .start();
    ASSERT_TRUE(run->shows("UNRELATED"));
    std::this_thread::sleep_for(milliseconds(1500));
    const BenchRun ended = run->finish();
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(times(ended.out, "\n<3>UNRELATED-EVENT-TO-FILL-THE-PIPE"), events);
    EXPECT_THAT(ended.out, EndsWith(regular_end));
}

} // namespace
} // namespace bench_test

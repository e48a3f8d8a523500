// SPDX-License-Identifier: Apache-2.0
// A storm that could not say "bad" would be worth nothing: each kind of bad end, and the good ends
// beside it.

#include "console_results.hpp"
#include "expected.hpp"
#include "storm_verdict.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

namespace bench_test {
namespace {

using namespace testing;

const std::vector<std::string> wlan{"-w", "-m", "1000"};
const std::string passed = "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n";
const std::string begun = start + checks;
constexpr Reaction in_time{500, 1000};

BenchRun run_with(const std::string& console) {
    BenchRun run;
    run.status = 0;
    run.out = console;
    return run;
}

BenchRun interrupted_run() {
    BenchRun run = run_with(begun + interrupted + cleanup + done);
    run.files["root/WIFIResult"] = passed;
    return run;
}

BenchRun killed_run() {
    return run_with(begun + "[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> 3\n" + cleanup +
                    done);
}

Verdict verdict_of(const BenchRun& run, const Reaction& reaction = in_time) {
    return judge(run, wlan, reaction).verdict;
}

TEST(StormVerdict, is_good_for_a_whole_end) {
    EXPECT_EQ(verdict_of(interrupted_run()), Verdict::good);
    EXPECT_EQ(verdict_of(killed_run()), Verdict::good);
}

TEST(StormVerdict, is_late_for_a_whole_end_after_the_limit) {
    const BenchRun run = interrupted_run();
    EXPECT_EQ(verdict_of(run, {1001, 1000}), Verdict::late);
    EXPECT_EQ(verdict_of(run, {1001, 3000}), Verdict::good);
}

TEST(StormVerdict, tells_what_a_late_run_lost) {
    BenchRun run = interrupted_run();
    run.files.clear();
    EXPECT_EQ(verdict_of(run, {1001, 1000}), Verdict::lost);
}

TEST(StormVerdict, is_wedged_for_a_run_that_does_not_end) {
    BenchRun run = interrupted_run();
    run.timed_out = true;
    EXPECT_EQ(verdict_of(run), Verdict::wedged);
}

TEST(StormVerdict, is_lost_without_results) {
    BenchRun run = interrupted_run();
    run.files.clear();
    EXPECT_EQ(verdict_of(run), Verdict::lost);
}

TEST(StormVerdict, is_lost_without_the_last_lines) {
    BenchRun run = interrupted_run();
    run.out = begun + interrupted + cleanup;
    EXPECT_EQ(verdict_of(run), Verdict::lost);
    run.out = begun;
    EXPECT_EQ(verdict_of(run), Verdict::lost);
    run.out = begun + interrupted + done;
    EXPECT_EQ(verdict_of(run), Verdict::lost);
}

TEST(StormVerdict, is_bad_for_results_that_the_console_does_not_show) {
    BenchRun run = interrupted_run();
    run.files["root/WIFIResult"] = "Test case 1 passed \nTest case 2 passed \n"
                                   "Test case 8 fail # 1\n";
    EXPECT_EQ(verdict_of(run), Verdict::bad);
    run.files["root/WIFIResult"] = "Test case 1 passed \nTest case 2 passed \n";
    EXPECT_EQ(verdict_of(run), Verdict::bad);
}

TEST(StormVerdict, is_bad_for_a_kill_that_writes_results_or_leaves_the_loopback_on) {
    BenchRun run = killed_run();
    run.files["root/WIFIResult"] = passed;
    EXPECT_EQ(verdict_of(run), Verdict::bad);
    run = killed_run();
    run.files["parameters/usbloop_enable"] = "1\n";
    EXPECT_EQ(verdict_of(run), Verdict::bad);
}

TEST(StormVerdict, is_bad_for_a_foreign_status_two_signals_or_a_socket_that_is_left) {
    BenchRun run = interrupted_run();
    run.status = 128 + SIGSEGV;
    EXPECT_EQ(verdict_of(run), Verdict::bad);
    run = interrupted_run();
    run.out += "[WIFI] Got Kill signal...\n";
    EXPECT_EQ(verdict_of(run), Verdict::bad);
    run = interrupted_run();
    run.files["sockets"] = "wpa_ctrl_3-1\n";
    EXPECT_EQ(verdict_of(run), Verdict::bad);
}

TEST(StormVerdict, does_not_count_what_met_no_handler_or_came_too_late) {
    BenchRun run = run_with(banner);
    run.status = 128 + SIGINT;
    EXPECT_EQ(verdict_of(run), Verdict::before_the_handler);
    EXPECT_EQ(verdict_of(interrupted_run(), {std::nullopt, 1000}), Verdict::after_the_end);
}

TEST(StormVerdict, of_an_unread_console_asks_for_whole_results) {
    const auto verdict = [](const BenchRun& run, int signal) {
        return judge_unread(run, wlan, signal, in_time).verdict;
    };
    BenchRun run = run_with(begun);
    EXPECT_EQ(verdict(run, SIGINT), Verdict::lost);
    EXPECT_EQ(verdict(run, SIGTERM), Verdict::good);
    run.files["root/WIFIResult"] = passed;
    EXPECT_EQ(verdict(run, SIGINT), Verdict::good);
    EXPECT_EQ(verdict(run, SIGTERM), Verdict::bad);
    run.files["root/WIFIResult"] = "Test case 1 fail # 12\nTest case 2 passed \n"
                                   "Test case 8 fail # 3\n";
    EXPECT_EQ(verdict(run, SIGINT), Verdict::good);
    for (const char* cut :
         {"", "Test case 1 passed \n", "Test case 1 passed \nTest case 2 passed \n",
          "Test case 1 passed \nTest case 2 passed \nTest case 8 pass"}) {
        run.files["root/WIFIResult"] = cut;
        EXPECT_EQ(verdict(run, SIGINT), Verdict::lost) << cut;
    }
    run.timed_out = true;
    EXPECT_EQ(verdict(run, SIGINT), Verdict::wedged);
}

TEST(StormVerdict, of_blocked_results_asks_for_the_end_alone) {
    BenchRun run = killed_run();
    EXPECT_EQ(judge_blocked(run, in_time).verdict, Verdict::good);
    run.out = begun;
    EXPECT_EQ(judge_blocked(run, in_time).verdict, Verdict::lost);
    run.timed_out = true;
    EXPECT_EQ(judge_blocked(run, in_time).verdict, Verdict::wedged);
}

TEST(StormVerdict, counts_from_the_first_or_the_last_signal) {
    BenchRun run = killed_run();
    run.wall_ms = 1000;
    EXPECT_EQ(reaction_to_first_signal(run).ms, std::nullopt);
    run.files["signals"] = "700.000\n400.000\n";
    EXPECT_EQ(reaction_to_first_signal(run).ms, 600);
    EXPECT_EQ(reaction_to_last_signal(run, 3000).ms, 300);
}

TEST(ConsoleResults, hold_a_failure_that_was_filed) {
    const std::string console = begun + "unable to open sockets\n";
    EXPECT_THAT(possible_result_files(console, wlan),
                ElementsAre("Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 2\n"));
}

TEST(ConsoleResults, may_lack_the_failure_whose_session_is_still_open) {
    const std::string console = begun + "ERROR:SCAN-FAIL\n";
    EXPECT_THAT(
        possible_result_files(console, wlan),
        ElementsAre("Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 1\n", passed));
}

} // namespace
} // namespace bench_test

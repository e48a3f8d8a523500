// SPDX-License-Identifier: Apache-2.0
// Runs whose reader is slow or has stopped, whatever standard output and standard error are: an
// interrupt ends them soon, with their result file, and loses nothing for a reader that is alive.

#include "bench_run.hpp"
#include "console.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

namespace bench_test {
namespace {

using std::chrono::seconds;
using namespace testing;

const std::string nothing_failed =
    "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n";

/// The tool waits two seconds for a reader that takes nothing; the rest is for a busy machine.
constexpr double soon_ms = 6000;

/// The reader is late by then, and the console full.
constexpr const char* in_the_flood = "@5000ms";

Bench flooded(const Console& console, const std::string& signal) {
    Bench bench("endless-event-flood");
    bench.console(console).signal(signal + in_the_flood).args({"-w", "-u", "-m", "1"});
    return bench;
}

// ---- nobody reads ------------------------------------------------------------------------------

struct Stall {
    const char* name;
    ConsoleKind kind;
    /// Typed instead of stopping to read.
    std::string_view typed;
};

void PrintTo(const Stall& stall, std::ostream* out) {
    *out << stall.name;
}

class StalledConsole : public testing::TestWithParam<Stall> {
protected:
    Console console{GetParam().kind};

    void stall() {
        if (GetParam().typed.empty()) {
            console.read_at(0);
        } else {
            console.type(GetParam().typed);
        }
    }

    BenchRun run_with(const std::string& signal) {
        const auto run = flooded(console, signal).start();
        EXPECT_TRUE(console.shows("CTRL-EVENT-BSS-ADDED"));
        stall();
        EXPECT_TRUE(run->ends_unread(seconds(3) + seconds(9)));
        EXPECT_FALSE(console.was_seen_without_blocking());
        if (!run->ends_unread(seconds(0))) {
            return {};
        }
        return run->finish();
    }

    static void expect_soon(const BenchRun& run) {
        ASSERT_EQ(run.signals_sent_ms().size(), 1U);
        EXPECT_LT(run.wall_ms - run.signals_sent_ms().front(), soon_ms);
    }
};

TEST_P(StalledConsole, lets_an_interrupt_end_the_run_with_its_results) {
    const BenchRun run = run_with("INT");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), nothing_failed);
    expect_soon(run);
}

TEST_P(StalledConsole, lets_a_kill_end_the_run) {
    const BenchRun run = run_with("TERM");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), std::nullopt);
    expect_soon(run);
}

INSTANTIATE_TEST_SUITE_P(
    Consoles, StalledConsole,
    testing::Values(Stall{"cooked_terminal", ConsoleKind::cooked_terminal, ""},
                    Stall{"raw_terminal", ConsoleKind::raw_terminal, ""},
                    Stall{"terminal_stopped_by_a_key", ConsoleKind::cooked_terminal, "\x13"},
                    Stall{"pipe", ConsoleKind::pipe, ""}, Stall{"socket", ConsoleKind::socket, ""}),
    [](const auto& stall) { return std::string(stall.param.name); });

// ---- somebody reads slowly ---------------------------------------------------------------------

const std::string all_lines_of_an_interrupt =
    interrupted + "[WIFI]resultFile.flush() called\n" + cleanup_of_a_session + done;

struct Slowness {
    const char* name;
    ConsoleKind kind;
    int bytes_per_second;
};

void PrintTo(const Slowness& slowness, std::ostream* out) {
    *out << slowness.name;
}

class SlowReader : public testing::TestWithParam<Slowness> {
protected:
    Console console{GetParam().kind};

    std::string console_of_run_with(const std::string& signal) {
        const auto run = flooded(console, signal).start();
        EXPECT_TRUE(console.shows("CTRL-EVENT-BSS-ADDED"));
        console.read_at(GetParam().bytes_per_second);
        EXPECT_TRUE(run->ends_unread(seconds(3) + seconds(15)));
        return run->ends_unread(seconds(0)) ? console.rest() : console.text();
    }
};

TEST_P(SlowReader, gets_all_lines_of_an_interrupted_run) {
    EXPECT_THAT(console_of_run_with("INT"), EndsWith(all_lines_of_an_interrupt));
}

TEST_P(SlowReader, gets_all_lines_of_a_killed_run) {
    const std::string text = console_of_run_with("TERM");
    EXPECT_THAT(text, HasSubstr("[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> 3\n"));
    EXPECT_THAT(text, EndsWith(cleanup_of_a_session + done));
}

INSTANTIATE_TEST_SUITE_P(
    Consoles, SlowReader,
    testing::Values(Slowness{"pipe_at_3_kB_a_second", ConsoleKind::small_pipe, 3000},
                    Slowness{"pipe_at_10_kB_a_second", ConsoleKind::small_pipe, 10000},
                    Slowness{"terminal_at_3_kB_a_second", ConsoleKind::cooked_terminal, 3000},
                    Slowness{"terminal_at_10_kB_a_second", ConsoleKind::cooked_terminal, 10000}),
    [](const auto& slowness) { return std::string(slowness.param.name); });

TEST(PausingReader, that_goes_on_within_two_seconds_gets_all_lines) {
    Console console(ConsoleKind::small_pipe);
    const auto begin = std::chrono::steady_clock::now();
    const auto run = flooded(console, "INT").start();
    ASSERT_TRUE(console.shows("CTRL-EVENT-BSS-ADDED"));
    console.read_at(0);
    std::this_thread::sleep_until(begin + seconds(4));
    ASSERT_FALSE(run->ends_unread(seconds(0)));
    console.read_at(Console::fast);
    ASSERT_TRUE(run->ends_unread(seconds(5)));
    EXPECT_THAT(console.rest(), EndsWith(all_lines_of_an_interrupt));
}

// ---- what the console is to others -------------------------------------------------------------

class SharedConsole : public testing::TestWithParam<ConsoleKind> {};

constexpr int mode_that_does_not_block = 04000;

/// The flags of a descriptor as the kernel describes them: "pos:\t0\nflags:\t0100002\n...".
int flags_of(const std::string& description) {
    const std::string name = "flags:\t";
    const auto at = description.find(name);
    EXPECT_NE(at, std::string::npos) << description;
    return static_cast<int>(std::strtol(description.c_str() + at + name.size(), nullptr, 8));
}

TEST_P(SharedConsole, blocks_for_the_children_as_it_did_before) {
    Console console(GetParam());
    const auto run = Bench()
                         .line("program killall runs \"exit 0\"")
                         .line("program udhcpc runs \"sleep 1; cat /proc/$$/fdinfo/1 >/tmp/out; "
                               "cat /proc/$$/fdinfo/2 >/tmp/err\"")
                         .console(console)
                         .args({"-w", "-m", "1"})
                         .start();
    ASSERT_TRUE(run->ends_unread(seconds(30)));
    EXPECT_FALSE(console.was_seen_without_blocking());
    const std::string text = console.rest();
    EXPECT_THAT(text, EndsWith(regular_end));
    const BenchRun ended = run->finish();
    EXPECT_EQ(flags_of(ended.files.at("tmp/out")) & mode_that_does_not_block, 0);
    EXPECT_EQ(flags_of(ended.files.at("tmp/err")) & mode_that_does_not_block, 0);
}

INSTANTIATE_TEST_SUITE_P(Consoles, SharedConsole,
                         testing::Values(ConsoleKind::pipe, ConsoleKind::socket,
                                         ConsoleKind::cooked_terminal, ConsoleKind::raw_terminal));

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Memory that runs out so far that not even an exception can be thrown.

#include "bench_run.hpp"
#include "expected.hpp"
#include "hanging_folder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace bench_test {
namespace {

using namespace testing;

constexpr const char* earlier_results = "file /root/WIFIResult \"Test case 1 fail # 3\\n\"";

// The tool calls this program at its start, behind the records.
constexpr const char* ifconfig_uses_it_up =
    "interface down\nprogram ifconfig runs \"for pid in $(pidof wivex); do "
    "prlimit --pid $pid --as=1000000000; done\"";

constexpr const char* ifconfig_uses_it_up_and_stays =
    "interface down\nprogram ifconfig runs \"for pid in $(pidof wivex); do "
    "prlimit --pid $pid --as=1000000000; done; sleep 9\"";

Bench bench_with_little_memory() {
    return Bench().option("--preload", LITTLE_MEMORY);
}

// The console needs memory for a text that names this file.
std::string long_path() {
    return "/root/" + std::string(3000, 'x');
}

Bench run_that_loses_its_results() {
    return bench_with_little_memory().line(ifconfig_uses_it_up).args({"-A", "-R" + long_path()});
}

Bench interrupted_run() {
    return bench_with_little_memory()
        .line(ifconfig_uses_it_up_and_stays)
        .signal("INT@child:sleep")
        .args({"-A", "-R" + long_path()});
}

TEST(NoMemory, for_an_exception_at_the_start_is_told_and_leaves_the_results_of_an_earlier_run) {
    const BenchRun run = bench_with_little_memory()
                             .line(earlier_results)
                             .option("--under", UNDER_A_LIMIT)
                             .args({"-A", "-R" + long_path()})
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "[WIFI]ERROR:run ended early: out of memory\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.result_file(), "Test case 1 fail # 3\n");
}

TEST(NoMemory, for_an_exception_in_the_middle_of_a_run_leaves_the_results_of_the_run) {
    const BenchRun run = bench_with_little_memory()
                             .line(earlier_results)
                             .line(ifconfig_uses_it_up)
                             .args({"-A"})
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "[WIFI]ERROR:run ended early: out of memory\n");
    EXPECT_THAT(run.out, EndsWith(regular_end));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n");
}

TEST(NoMemory, for_the_name_of_the_result_file_is_told_with_the_results_that_are_lost) {
    const BenchRun run = run_that_loses_its_results().run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "[WIFI]ERROR:run ended early: out of memory\n"
                       "[WIFI]Unable to write results\n");
}

TEST(NoMemory, for_the_end_of_an_interrupted_run_is_told_once) {
    const BenchRun run = interrupted_run().run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "[WIFI]ERROR:run ended early: out of memory\n");
    EXPECT_THAT(run.out, EndsWith("Please hold on...\n"));
}

// ---- on a console that is slow -----------------------------------------------------------------

TEST(NoMemory, waits_for_a_slow_console_to_take_the_last_message) {
    HangingFolder folder;
    if (!folder.mounted()) {
        GTEST_SKIP() << "no file system of our own can be mounted here";
    }
    folder.take_time_for("Unable to write results");
    const BenchRun run =
        run_that_loses_its_results().out_file(folder.file()).streams_together().run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(folder.content(), EndsWith("[WIFI]ERROR:run ended early: out of memory\n"
                                           "[WIFI]Unable to write results\n"));
}

TEST(NoMemory, waits_for_a_slow_console_to_take_the_message_of_an_interrupted_run) {
    HangingFolder folder;
    if (!folder.mounted()) {
        GTEST_SKIP() << "no file system of our own can be mounted here";
    }
    folder.take_time_for("out of memory");
    const BenchRun run = interrupted_run().out_file(folder.file()).streams_together().run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(folder.content(), EndsWith("[WIFI]ERROR:run ended early: out of memory\n"));
}

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Files whose opening never ends, as on a network mount that hangs: a named pipe with nobody at its
// other end stands for them. An interrupt ends the run all the same.

#include "bench_run.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace bench_test {
namespace {

using namespace testing;

constexpr double soon_ms = 3000;
constexpr const char* same_address = "driver answers address with 00:0a:f5:12:34:56\n"
                                     "driver answers variable cur_etheraddr with 00:0a:f5:12:34:56";

double from_last_signal_ms(const BenchRun& run) {
    const auto sent = run.signals_sent_ms();
    return sent.empty() ? -1 : run.wall_ms - *std::max_element(sent.begin(), sent.end());
}

// ---- the result file ---------------------------------------------------------------------------

/// A run that stands in its scan; its result file blocks.
Bench with_blocking_results() {
    Bench bench("scan-never-ends");
    bench.line("file /tmp/result blocks").args({"-w", "-m", "1", "-R/tmp/result"});
    bench.at_most(std::chrono::seconds(12));
    return bench;
}

TEST(BlockingResultFile, of_an_interrupted_run_gives_way_to_a_kill) {
    const BenchRun run = with_blocking_results().signal("INT@1500ms").signal("TERM@2000ms").run();
    ASSERT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(from_last_signal_ms(run), soon_ms);
    EXPECT_THAT(run.out, HasSubstr("[WIFI] Got ^C. Writing results to file before "
                                   "quitting.Please hold on...\n"));
    EXPECT_THAT(run.out, EndsWith(done));
}

TEST(BlockingResultFile, of_an_interrupted_run_is_no_matter_of_a_second_interrupt) {
    const auto run = with_blocking_results().signal("INT@1500ms").signal("INT@2000ms").start();
    EXPECT_FALSE(run->ends_unread(std::chrono::seconds(4)));
}

/// A run that comes to its end; its result file blocks.
Bench ending_with_blocking_results() {
    Bench bench;
    bench.line(same_address).line("file /tmp/result blocks");
    bench.args({"-M", "-m", "1", "-R/tmp/result"}).at_most(std::chrono::seconds(12));
    return bench;
}

TEST(BlockingResultFile, at_the_normal_end_gives_way_to_a_kill) {
    const BenchRun run = ending_with_blocking_results().signal("TERM@4000ms").run();
    ASSERT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(from_last_signal_ms(run), soon_ms);
    EXPECT_THAT(run.out, EndsWith("[WIFI]user file name is /tmp/result\n[WIFI] Got Kill "
                                  "signal...\n[WIFI]Calling for chip --> 3\n" +
                                  cleanup + done));
}

TEST(BlockingResultFile, at_the_normal_end_gives_way_to_an_interrupt_and_a_kill) {
    const BenchRun run =
        ending_with_blocking_results().signal("INT@4000ms").signal("TERM@4500ms").run();
    ASSERT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(from_last_signal_ms(run), soon_ms);
    EXPECT_THAT(run.out, EndsWith(done));
}

TEST(BlockingLoopbackParameter, of_a_killed_run_gives_way_to_an_interrupt) {
    const BenchRun run =
        run_wlan(Bench("scan-never-ends")
                     .line("file /sys/module/bcmdhd/parameters/usbloop_enable blocks")
                     .signal("TERM@1500ms")
                     .signal("INT@2000ms")
                     .at_most(std::chrono::seconds(12)));
    ASSERT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(from_last_signal_ms(run), soon_ms);
    EXPECT_THAT(run.out, EndsWith(done));
}

// ---- the other files ---------------------------------------------------------------------------

struct BlockingFile {
    const char* name;
    const char* scenario;
    std::string lines;
    std::vector<std::string> arguments;
};

void PrintTo(const BlockingFile& file, std::ostream* out) {
    *out << file.name;
}

class BlockedRun : public testing::TestWithParam<BlockingFile> {
protected:
    static BenchRun run_with(const std::string& signal) {
        return Bench(GetParam().scenario)
            .line(GetParam().lines)
            .signal(signal + "@2000ms")
            .args(GetParam().arguments)
            .at_most(std::chrono::seconds(12))
            .run();
    }
};

TEST_P(BlockedRun, can_be_interrupted_and_leaves_its_results) {
    const BenchRun run = run_with("INT");
    ASSERT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(from_last_signal_ms(run), soon_ms);
    EXPECT_THAT(run.out, EndsWith(interrupted + cleanup + done));
    EXPECT_THAT(run.result_file().value_or("none"), StartsWith("Test case 1 passed \n"));
}

TEST_P(BlockedRun, can_be_killed) {
    const BenchRun run = run_with("TERM");
    ASSERT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_LT(from_last_signal_ms(run), soon_ms);
    EXPECT_THAT(run.out, EndsWith(cleanup + done));
    EXPECT_EQ(run.result_file(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    Files, BlockedRun,
    testing::Values(
        BlockingFile{"status_file_of_the_previous_run",
                     "scan-listing",
                     "file /tmp/status blocks",
                     {"-SLINE", "-D/tmp/status"}},
        BlockingFile{"status_file",
                     "scan-listing",
                     "file /tmp/status blocks",
                     {"-SLINE", "-odbus", "-D/tmp/status"}},
        BlockingFile{"listing", "scan-listing", "file /tmp/output blocks", {"-S"}},
        BlockingFile{
            "address_file", "", std::string(same_address) + "\nfile /root/WIFIAddr blocks", {"-M"}},
        BlockingFile{"bus_at_the_start", "", "file /proc/bus/usb/devices blocks", {"-w"}},
        BlockingFile{"device_list",
                     "",
                     "config device_type=other\nconfig usbdevlist=/tmp/list\nfile /tmp/list blocks",
                     {"-w"}},
        BlockingFile{"interface_flags",
                     "",
                     "config wifidev=/tmp/net\nfile /tmp/net/wlan0/flags blocks",
                     {"-w"}}),
    [](const auto& file) { return std::string(file.param.name); });

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// Runs that are ended early, by ^C or by a kill, wherever they stand.

#include "bench_run.hpp"
#include "expected.hpp"
#include "text_parts.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <ostream>
#include <string>

namespace bench_test {
namespace {

using namespace testing;

const std::string nothing_failed =
    "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n";

/// What is interrupted here would last longer than this, even in the first iteration of many.
constexpr double far_below_the_wait_ms = 9000;

/// Where a run stands when the signal comes.
struct Moment {
    const char* name;
    const char* scenario;
    const char* line;
    /// Behind "INT@" or "TERM@".
    const char* when;
    /// Whether the session is open then.
    bool session;
};

void PrintTo(const Moment& moment, std::ostream* out) {
    *out << moment.name;
}

/// What the tool wrote: a child that the signal did not reach, such as iperf, may print on
/// meanwhile.
std::string without_lines_of_iperf(const std::string& console) {
    std::string kept;
    for (const std::string& line : lines_of(console)) {
        if (!line.starts_with("[ ")) {
            kept += line + "\n";
        }
    }
    return kept;
}

class MomentOfARun : public testing::TestWithParam<Moment> {
protected:
    static BenchRun run_with(const std::string& signal) {
        return run_wlan(Bench(GetParam().scenario)
                            .line(GetParam().line)
                            .signal(signal + "@" + GetParam().when)
                            .at_most(std::chrono::seconds(30)),
                        100);
    }

    static const std::string& expected_cleanup() {
        return GetParam().session ? cleanup_of_a_session : cleanup;
    }
};

TEST_P(MomentOfARun, can_be_interrupted) {
    const BenchRun run = run_with("INT");
    EXPECT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(without_lines_of_iperf(run.out), EndsWith(interrupted + expected_cleanup() + done));
    EXPECT_EQ(run.result_file(), nothing_failed);
    EXPECT_THAT(run.sockets(), IsEmpty());
    EXPECT_LT(run.wall_ms, far_below_the_wait_ms);
}

TEST_P(MomentOfARun, can_be_killed) {
    const BenchRun run = run_with("TERM");
    EXPECT_FALSE(run.timed_out);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(without_lines_of_iperf(run.out),
                EndsWith("[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> 3\n" +
                         expected_cleanup() + done));
    EXPECT_THAT(run.err, HasSubstr("[WIFI]Open error: No such file or directory\n"));
    EXPECT_EQ(run.result_file(), std::nullopt);
    EXPECT_THAT(run.sockets(), IsEmpty());
    EXPECT_LT(run.wall_ms, far_below_the_wait_ms);
}

INSTANTIATE_TEST_SUITE_P(
    Places, MomentOfARun,
    testing::Values(
        Moment{"opening_the_session", "", "", "600ms", true},
        Moment{"attaching", "supplicant-never-answers", "", "command:ATTACH+500ms", true},
        Moment{"in_a_request", "", "supplicant ignores \"SCAN\"", "command:SCAN+500ms", true},
        Moment{"waiting_for_scan_results", "scan-never-ends", "", "command:SCAN+500ms", true},
        Moment{"waiting_for_the_connection", "connection-never-comes", "",
               "command:SELECT_NETWORK 0 +500ms", true},
        Moment{"waiting_for_the_disconnection", "disconnect-event-never-comes", quick_address,
               "command:DISABLE_NETWORK 0 +500ms", true},
        Moment{"among_endless_events", "endless-event-flood", "", "command:SELECT_NETWORK 0 +800ms",
               true},
        Moment{"with_a_forever_busy_supplicant", "scan-busy-forever", "", "command:SCAN+500ms",
               true},
        Moment{"in_the_dhcp_client", "", "program udhcpc runs \"exec sleep 20\"",
               "child:sleep+300ms", true},
        Moment{"in_the_real_dhcp_client", "dhcp-server-absent", "", "child:udhcpc+300ms", true},
        Moment{"in_an_endless_search_for_the_dhcp_client", "",
               "program udhcpc runs \"exit 0\"\nprogram killall runs \"exit 1\"",
               "child:killall+500ms", true},
        Moment{"in_the_real_iperf", "pass", "", "child:iperf+500ms", true},
        Moment{"between_iterations", "", quick_address, "command:DISABLE_NETWORK 0 +1000ms",
               false}),
    [](const auto& moment) { return moment.param.name; });

// ---- what an interrupted run has recorded ------------------------------------------------------

TEST(InterruptedRun, keeps_the_failures_recorded_up_to_then) {
    const BenchRun run =
        run_wlan(Bench("scan-refused").line("module none").signal("INT@command:SCAN#3+500ms"), 100);
    EXPECT_EQ(run.result_file(), "Test case 1 fail # 3\nTest case 2 passed \n"
                                 "Test case 8 fail # 3\n");
}

TEST(InterruptedRun, counts_of_the_running_iteration_only_what_it_had_recorded) {
    const BenchRun run = run_wlan(Bench("connection-never-comes")
                                      .line("module none")
                                      .signal("INT@command:SELECT_NETWORK 0 +300ms"),
                                  100);
    EXPECT_EQ(run.result_file(), "Test case 1 fail # 1\nTest case 2 passed \n"
                                 "Test case 8 passed \n");
}

TEST(InterruptedRun, writes_its_results_where_the_option_says) {
    const BenchRun run = Bench("scan-never-ends")
                             .signal("INT@command:SCAN+300ms")
                             .args({"-w", "-m", "1", "-R/tmp/my-result"})
                             .run();
    EXPECT_EQ(run.files.at("tmp/my-result"), nothing_failed);
    EXPECT_THAT(run.out,
                HasSubstr("[WIFI] Got ^C. Writing results to file before quitting.Please hold "
                          "on...\n[WIFI]user file name is /tmp/my-result\n"
                          "[WIFI]ResultFile: /tmp/my-result Updated\n"
                          "[WIFI] Before resultFile.flush call \n"));
}

TEST(InterruptedRun, tells_when_its_results_cannot_be_written) {
    const BenchRun run = Bench("scan-never-ends")
                             .signal("INT@command:SCAN+300ms")
                             .args({"-w", "-m", "1", "-R/tmp/x/res"})
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "[WIFI]Unable to open Result File: ");
    EXPECT_THAT(run.out, EndsWith("[WIFI]user file name is /tmp/x/res\n/tmp/x/res\n"
                                  "[WIFI] Before resultFile.flush call \n" +
                                  cleanup_of_a_session + done));
}

TEST(InterruptedRun, tells_of_the_flush_with_debug) {
    const BenchRun run = Bench("scan-never-ends")
                             .signal("INT@command:SCAN+300ms")
                             .args({"-w", "-u", "-m", "1"})
                             .run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI] Before resultFile.flush call \n"
                                   "[WIFI]resultFile.flush() called\n[WIFI]Cleanup\n"));
}

TEST(InterruptedRun, handles_only_the_first_of_several_interrupts) {
    const BenchRun run = run_wlan(Bench("scan-never-ends")
                                      .signal("INT@command:SCAN+300ms")
                                      .signal("INT@command:SCAN+300ms")
                                      .signal("INT@command:SCAN+301ms"));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, EndsWith(interrupted + cleanup_of_a_session + done));
    EXPECT_EQ(run.out.find("Got ^C"), run.out.rfind("Got ^C"));
}

TEST(InterruptedRun, can_rest_for_its_interval) {
    const BenchRun run = Bench()
                             .line(quick_address)
                             .signal("INT@command:DISABLE_NETWORK 0 +1000ms")
                             .args({"-w", "-m", "100", "-i", "50"})
                             .run();
    EXPECT_THAT(run.out, EndsWith("Call to DISABLE_NETWORK is successful...\n" + interrupted +
                                  cleanup_of_a_session + done));
    EXPECT_LT(run.wall_ms, far_below_the_wait_ms);
}

TEST(InterruptedRun, can_be_at_its_question_where_the_default_action_still_holds) {
    const auto run =
        Bench().signal("INT@1500ms").args({"-w", "-m", "1", "-F"}).start(); // nobody answers
    ASSERT_TRUE(run->shows("[DEFAULT: None]\n\n"));
    ASSERT_TRUE(run->ends_unread(std::chrono::seconds(5)));
    const BenchRun ended = run->finish();
    EXPECT_EQ(ended.status, 130);
    EXPECT_EQ(ended.result_file(), std::nullopt);
}

TEST(InterruptedRun, ends_although_nobody_reads_its_output) {
    const auto run =
        Bench("endless-event-flood").signal("INT@4500ms").args({"-w", "-u", "-m", "1"}).start();
    ASSERT_TRUE(run->shows("CTRL-EVENT-BSS-ADDED")); // and from here on nobody reads
    ASSERT_TRUE(run->ends_unread(std::chrono::seconds(9)));
    const BenchRun ended = run->finish();
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.result_file(), nothing_failed);
    EXPECT_LT(ended.wall_ms, far_below_the_wait_ms);
}

TEST(KilledRun, ends_although_nobody_reads_its_output) {
    const auto run =
        Bench("endless-event-flood").signal("TERM@4500ms").args({"-w", "-u", "-m", "1"}).start();
    ASSERT_TRUE(run->shows("CTRL-EVENT-BSS-ADDED"));
    ASSERT_TRUE(run->ends_unread(std::chrono::seconds(9)));
    const BenchRun ended = run->finish();
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.result_file(), std::nullopt);
}

// ---- what a kill does to the module ------------------------------------------------------------

struct KilledModule {
    const char* name;
    const char* line;
    int chip;
    /// What is told of the module.
    const char* told;
};

void PrintTo(const KilledModule& module, std::ostream* out) {
    *out << module.line;
}

class ModuleOfAKilledRun : public testing::TestWithParam<KilledModule> {};

TEST_P(ModuleOfAKilledRun, leaves_loopback_mode_where_it_has_one) {
    const BenchRun run =
        run_wlan(Bench("scan-never-ends")
                     .line(GetParam().line)
                     .line("file /sys/module/bcmdhd/parameters/usbloop_enable \"1\\n\"")
                     .signal("TERM@command:SCAN+300ms"));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, EndsWith("[WIFI] Got Kill signal...\n[WIFI]Calling for chip --> " +
                                  std::to_string(GetParam().chip) + "\n" + GetParam().told +
                                  cleanup_of_a_session + done));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.result_file(), std::nullopt);
}

constexpr const char* switched =
    "[WIFI]Write to file \"/sys/module/bcmdhd/parameters/usbloop_enable\" success\n";
constexpr const char* qca = "[WIFI]WiFi Vendor is QCA 11n. Nothing to do.\n";

INSTANTIATE_TEST_SUITE_P(
    Modules, ModuleOfAKilledRun,
    testing::Values(KilledModule{"module_bd27", "module 0a5c:bd27", 3, switched},
                    KilledModule{"module_20a0", "module 9e0c:20a0", 5, switched},
                    KilledModule{"module_1022", "module 0cf3:1022", 1, qca},
                    KilledModule{"module_9378", "module 0cf3:9378", 2, qca},
                    KilledModule{"module_bd1d", "module 0a5c:bd1d", 4, ""},
                    KilledModule{"no_module", "module none", 0, ""}),
    [](const auto& module) { return module.param.name; });

} // namespace
} // namespace bench_test

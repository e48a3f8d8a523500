// SPDX-License-Identifier: Apache-2.0
// The legacy WLAN test with a supplicant in trouble, and at the limits of its socket's path.

#include "bench_run.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace bench_test {
namespace {

using namespace testing;

TEST(TroubledSupplicant, that_dies_during_a_command_fails_it_after_10_seconds) {
    const BenchRun run = run_wlan(Bench().line("supplicant dies on \"SCAN\""));
    EXPECT_EQ(run.out, start + checks + "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n" + closed +
                           regular_end);
    EXPECT_EQ(run.result_file(), result_of(8, 1));
    EXPECT_LT(run.wall_ms, 22000);
}

TEST(TroubledSupplicant, that_dies_while_an_event_is_awaited_lets_the_time_run_out) {
    const BenchRun run = run_wlan(Bench()
                                      .line("supplicant dies after \"SELECT_NETWORK 0 \"")
                                      .line("supplicant withholds \"CTRL-EVENT-CONNECTED\""));
    EXPECT_THAT(run.err, HasSubstr("Unable to Connect Time out!!!\n"));
    EXPECT_EQ(run.result_file(), result_of(8, 1));
    EXPECT_LT(run.processor_ms, 50);
}

TEST(TroubledSupplicant, that_sleeps_for_a_while_is_waited_for) {
    const BenchRun run = run_wlan(Bench()
                                      .line("supplicant stops on \"SCAN_RESULTS\"")
                                      .line("supplicant continues after 3s")
                                      .line(quick_address));
    EXPECT_EQ(run.result_file(), result_of(8, 0));
}

TEST(TroubledSupplicant, whose_reply_comes_after_9_seconds_is_in_time) {
    const BenchRun run =
        run_wlan(Bench()
                     .line("supplicant answers \"REMOVE_NETWORK all\" with \"OK\\n\" after 9s")
                     .line(quick_address));
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.result_file(), result_of(8, 0));
}

TEST(TroubledSupplicant, whose_reply_comes_after_11_seconds_is_too_late) {
    const BenchRun run =
        run_wlan(Bench().line("supplicant answers \"ADD_NETWORK\" with \"0\\n\" after 11s"));
    EXPECT_EQ(run.err, "ADD_NETWORK Command not successful\n");
    EXPECT_EQ(run.result_file(), result_of(8, 1));
}

TEST(TroubledSupplicant, that_returns_serves_the_next_iteration) {
    const BenchRun run = run_wlan(Bench()
                                      .line("supplicant dies on \"SCAN\" 1")
                                      .line("supplicant returns after 1s")
                                      .line(quick_address),
                                  2);
    EXPECT_EQ(run.result_file(), result_of(8, 1));
    EXPECT_THAT(run.out, HasSubstr("Call to DISABLE_NETWORK is successful...\n"));
}

TEST(TroubledSupplicant, whose_listing_is_longer_than_the_buffer_is_understood_as_far_as_it_fits) {
    const std::string header = "bssid / frequency / signal level / flags / ssid\\n";
    const BenchRun seen = run_wlan(Bench()
                                       .line("supplicant answers \"SCAN_RESULTS\" with \"" +
                                             header + "02:01\\t2412\\t-40\\t[ESS]\\tbench-ap\\n" +
                                             std::string(3000, 'x') + "\"")
                                       .line(quick_address));
    EXPECT_EQ(seen.result_file(), result_of(8, 0));
    const BenchRun unseen = run_wlan(Bench().line("supplicant answers \"SCAN_RESULTS\" with \"" +
                                                  header + std::string(1200, 'x') +
                                                  "\\n02:01\\t2412\\t-40\\t[ESS]\\tbench-ap\\n\""));
    EXPECT_THAT(unseen.out, HasSubstr("bench-apis not found!!!\n"));
}

TEST(TroubledSupplicant, that_talks_garbage_does_no_harm) {
    const BenchRun run =
        Bench()
            .line("supplicant answers \"SCAN_RESULTS\" with \"\\xff\\x00\\x80bssid\\n\\0\\0\"")
            .line("supplicant sends \"\\xff\\xfe\\0\\n%s%n\" on \"SCAN\"")
            .args({"-w", "-u", "-m", "1"})
            .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.result_file(), result_of(8, 1));
}

// ---- the control socket's path -----------------------------------------------------------------

TEST(ControlPath, of_107_characters_is_used) {
    const std::string folder = "/tmp/" + std::string(107 - 5 - 6, 'd');
    const BenchRun run = run_wlan(Bench("scan-refused").set("ctrl_iface", folder));
    EXPECT_EQ(run.commands(), std::vector<std::string>{"SCAN"});
}

TEST(ControlPath, of_108_characters_is_refused) {
    const std::string folder = "/tmp/" + std::string(108 - 5 - 6, 'd');
    const BenchRun run = run_wlan(Bench("supplicant-absent").set("ctrl_iface", folder));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Unable to open sockets!!\n"));
    EXPECT_EQ(run.result_file(), result_of(8, 2));
}

} // namespace
} // namespace bench_test

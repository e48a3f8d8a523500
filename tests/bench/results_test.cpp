// SPDX-License-Identifier: Apache-2.0
// The result file of whole runs.

#include "bench_run.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace bench_test {
namespace {

using namespace testing;

TEST(ResultFileOfARun, goes_where_the_option_says) {
    const BenchRun run = Bench("scan-refused").args({"-w", "-m", "1", "-R/tmp/my-result"}).run();
    EXPECT_EQ(run.files.at("tmp/my-result"), "Test case 1 passed \nTest case 2 passed \n"
                                             "Test case 8 fail # 1\n");
    EXPECT_EQ(run.result_file(), std::nullopt);
    EXPECT_THAT(run.out, HasSubstr("[WIFI]user file name is /tmp/my-result\n"
                                   "[WIFI]ResultFile: /tmp/my-result Updated\n[WIFI]Cleanup\n"));
}

TEST(ResultFileOfARun, that_cannot_be_opened_is_told_on_two_streams_and_the_run_ends_normally) {
    const BenchRun run = Bench("scan-refused").args({"-w", "-m", "1", "-R/tmp/x/res"}).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, testing::EndsWith("[WIFI]Unable to open Result File: "));
    EXPECT_THAT(run.out,
                testing::EndsWith("[WIFI]user file name is /tmp/x/res\n/tmp/x/res\n" + cleanup));
    EXPECT_EQ(run.files.count("tmp/x/res"), 0U);
}

TEST(ResultFileOfARun, that_cannot_be_opened_at_its_usual_place_is_told_too) {
    const BenchRun run = run_wlan(Bench("scan-refused").line("folder /root read-only"));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, testing::EndsWith("[WIFI]Unable to open Result File: "));
    EXPECT_THAT(run.out, testing::EndsWith("/root/WIFIResult\n" + cleanup));
    EXPECT_THAT(run.out, Not(HasSubstr("user file name")));
}

TEST(ResultFileOfARun, replaces_that_of_an_earlier_run) {
    const BenchRun run = run_wlan(
        Bench("scan-refused").line("file /root/WIFIResult \"" + std::string(500, 'x') + "\""));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 8 fail # 1\n");
}

TEST(ResultFileOfARun, counts_what_failed_in_each_test_case) {
    const BenchRun run =
        run_wlan(Bench("supplicant-absent").line("module none").line("interface absent"), 2);
    EXPECT_EQ(run.result_file(), "Test case 1 fail # 2\nTest case 2 fail # 2\n"
                                 "Test case 8 fail # 4\n");
}

TEST(ResultFileOfARun, passes_however_many_iterations_passed) {
    const BenchRun run = run_wlan(Bench().line(quick_address), 3);
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 8 passed \n");
}

} // namespace
} // namespace bench_test

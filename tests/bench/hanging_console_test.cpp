// SPDX-License-Identifier: Apache-2.0
// A console that is a file on a file system that hangs.

#include "bench_run.hpp"
#include "expected.hpp"
#include "hanging_folder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

namespace bench_test {
namespace {

using std::chrono::milliseconds;
using namespace testing;

bool shows(const HangingFolder& folder, std::string_view text) {
    for (int tries = 0; tries < 500; ++tries) {
        if (folder.content().find(text) != std::string::npos) {
            return true;
        }
        std::this_thread::sleep_for(milliseconds(20));
    }
    return false;
}

template <typename Base>
class OnHangingFolder : public Base {
protected:
    void SetUp() override {
        if (!folder_.mounted()) {
            GTEST_SKIP() << "no file system of our own can be mounted here";
        }
    }

    HangingFolder folder_;
};

class HangingConsole : public OnHangingFolder<testing::TestWithParam<const char*>> {};

class FileConsole : public OnHangingFolder<testing::Test> {};

TEST_P(HangingConsole, does_not_hold_the_end_of_the_run) {
    const auto run = Bench("endless-event-flood")
                         .out_file(folder_.file())
                         .streams_together()
                         .signal(std::string(GetParam()) + "@5000ms")
                         .args({"-w", "-u"})
                         .start();
    EXPECT_TRUE(shows(folder_, "CTRL-EVENT"));
    folder_.hang();
    // What hangs keeps the world of the run from going away, but not the tool from ending.
    std::this_thread::sleep_for(milliseconds(8000));
    folder_.release();
    const BenchRun result = run->finish();
    EXPECT_EQ(result.status, 0);
    EXPECT_LT(result.wall_ms - result.signals_sent_ms().at(0), 3000);
    EXPECT_EQ(result.result_file().has_value(), std::string(GetParam()) == "INT");
}

INSTANTIATE_TEST_SUITE_P(Signals, HangingConsole, testing::Values("INT", "TERM"),
                         [](const auto& signal) { return std::string(signal.param); });

TEST_F(FileConsole, gets_every_line_in_its_order) {
    const BenchRun piped = Bench("scan-refused").args({"-w"}).streams_together().run();
    const BenchRun run =
        Bench("scan-refused").args({"-w"}).out_file(folder_.file()).streams_together().run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(piped.out,
                HasSubstr("Scan Command not successful\nFail to send Scan Command!!!\n"));
    EXPECT_EQ(folder_.content(), piped.out);
}

TEST_F(FileConsole, that_is_slow_gets_the_last_line_of_a_run_without_results) {
    folder_.take_time_for("softAP");
    const BenchRun run = Bench()
                             .args({"-A"})
                             .out_file(folder_.file())
                             .streams_together()
                             .at_most(std::chrono::seconds(15))
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(folder_.content(), EndsWith("[WIFI]ERROR:create softAP problem\n"));
}

TEST_F(FileConsole, that_is_slow_gets_the_last_line_of_an_interrupted_run) {
    folder_.take_time_for("Done..");
    const BenchRun run = Bench()
                             .line("interface down\nprogram ifconfig runs \"sleep 9\"")
                             .signal("INT@child:sleep")
                             .args({"-A"})
                             .out_file(folder_.file())
                             .streams_together()
                             .at_most(std::chrono::seconds(15))
                             .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(folder_.content(), EndsWith(cleanup + "[WIFI] Done..\n"));
}

} // namespace
} // namespace bench_test

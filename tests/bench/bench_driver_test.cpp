// SPDX-License-Identifier: Apache-2.0
// The bench's own driver and chip: their scenario lines, and what they leave alone.

#include "bench_run.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace bench_test;
using namespace testing;

constexpr int bench_failure = 125;

TEST(BenchDriver, refuses_lines_that_it_does_not_understand) {
    for (const char* line :
         {"driver", "driver answers", "driver answers variable x with", "driver answers address",
          "driver answers address with 0", "driver answers variable x with 00 at",
          "driver refuses table with ESOMETHING", "driver refuses table with E2BIG claiming 40",
          "driver describes requests", "driver describes request 1 as x",
          "driver accepts variable x after", "chip", "chip register x reads \"y\"",
          "chip register 0x1 reads", "chip memory 0x1 holds", "chip memory ends",
          "chip phy phy0 more"}) {
        const BenchRun run = Bench().line(line).args({"-l"}).run();
        EXPECT_EQ(bench_failure, run.status) << line;
        EXPECT_THAT(run.err, HasSubstr("not understood: ")) << line;
    }
}

TEST(BenchDriver, answers_the_tool_alone) {
    const BenchRun run = Bench()
                             .line("driver refuses address with EIO")
                             .option("--tool", "/bin/sh")
                             .args({"-c", "ifconfig wlan0"})
                             .run();
    EXPECT_THAT(run.out, HasSubstr("ether "));
    EXPECT_FALSE(run.files.contains("driver.log"));
}

TEST(BenchDriver, leaves_what_no_line_speaks_of_to_the_kernel) {
    const BenchRun run =
        Bench().line("driver accepts variable unknown").option("--faster", "10").args({"-M"}).run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI]MAC from kernel ioctl :- "));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]##### ioctl Failed to send driver #####\n"));
    EXPECT_FALSE(run.files.contains("driver.log"));
}

TEST(BenchChip, leaves_the_processes_of_the_world_in_proc) {
    const BenchRun run = Bench()
                             .line("chip memory 0x0 holds 0x1")
                             .option("--tool", "/bin/sh")
                             .args({"-c", "sleep 60 & killall sleep && wc -c < "
                                          "/proc/cld/athdiagpfs && ls /proc/bus/usb"})
                             .run();
    EXPECT_EQ("4\ndevices\n", run.out);
}

} // namespace

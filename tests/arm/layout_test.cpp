// SPDX-License-Identifier: Apache-2.0
// Driver requests in the layout of the 32-bit device, byte by byte, and the verdicts there.

#include "bench_run.hpp"
#include "loopback_rehearsal.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace bench_test;
using namespace testing;

Bench on_arm(const std::string& scenario, const std::vector<std::string>& arguments) {
    return Bench(scenario)
        .option("--tool", ARM_TOOL)
        .option("--driver", ARM_DRIVER)
        .option("--under", "qemu-arm -L /usr/arm-linux-gnueabihf "
                           "-E LD_LIBRARY_PATH=/usr/lib/arm-linux-gnueabihf")
        .args(arguments);
}

BenchRun run_on_arm(const std::string& scenario, const std::vector<std::string>& arguments) {
    return on_arm(scenario, arguments).run();
}

TEST(ArmLayout, of_the_broadcom_loopback) {
    const BenchRun run = run_on_arm("loopback/broadcom-pass", {"-l"});
    EXPECT_EQ("request 0x89f0\n"
              "  ifreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** 00*12\n"
              "  record 07 01 00 00 ** ** ** ** 11 00 00 00 01 00*15\n"
              "  buffer 62 75 73 3a 6c 6f 6f 70 62 61 63 6b 00 01 00*114\n"
              "  result 0\n"
              "request 0x89f0\n"
              "  ifreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** 00*12\n"
              "  record 03 00 00 00 ** ** ** ** 19 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 "
              "44 49 44 00\n"
              "  buffer 75 73 62 5f 6c 62 5f 74 78 66 65 72 00 00 04 00 00 64 00 00 00 "
              "ff ff ff ff 00*103\n"
              "  result 0\n",
              run.files.at("driver.log"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]===> Loopback Test Passed Successfully ff<===\n"
                                   "[WIFI]LOOPBACK SUCCESS\n"));
}

TEST(ArmLayout, of_a_broadcom_loopback_that_lost_packets) {
    const BenchRun run = run_on_arm("loopback/broadcom-lost", {"-l"});
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Loopback fail, status  0\n"
                                   "[WIFI]### LOOPBACK FAIL ###\n"));
}

TEST(ArmLayout, of_the_broadcom_address) {
    const BenchRun run = run_on_arm("mac/broadcom-same", {"-M"});
    EXPECT_EQ("request 0x8927\n"
              "  ifreq 77 6c 61 6e 30 00*27\n"
              "  result 0\n"
              "request 0x89f0\n"
              "  ifreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** 00*12\n"
              "  record 06 01 00 00 ** ** ** ** 0e 00*19\n"
              "  buffer 63 75 72 5f 65 74 68 65 72 61 64 64 72 00*115\n"
              "  result 0\n",
              run.files.at("driver.log"));
    EXPECT_EQ("00:0A:F5:12:34:56\n", run.files.at("root/WIFIAddr"));
}

TEST(ArmLayout, of_the_combo_loopback) {
    const BenchRun run = run_on_arm("loopback/combo-hint", {"-l"});
    EXPECT_EQ("request 0x8b0d\n"
              "  iwreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** 10 00*11\n"
              "  result -1 E2BIG\n"
              "request 0x8b0d\n"
              "  iwreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** 28 00*11\n"
              "  result 0\n"
              "request 0x8be5\n"
              "  iwreq 77 6c 61 6e 30 00 00 00 00 00 00 00 00 00 00 00 ** ** ** ** 00 00 38 00*9\n"
              "  result 0\n",
              run.files.at("driver.log"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Loopback Successful \n[WIFI]LOOPBACK SUCCESS\n"));
}

TEST(ArmLayout, of_a_table_without_terminators) {
    const BenchRun run = run_on_arm("loopback/combo-unterminated", {"-l"});
    EXPECT_THAT(run.out, HasSubstr("command is 56 which is 2-th private ioctl"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]LOOPBACK SUCCESS\n"));
}

TEST(ArmBuild, reads_the_words_of_the_diag_device) {
    const BenchRun run = run_on_arm("mac/combo-same", {"-M"});
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Value in target at 0x18000: 0x12f50a00 (318048768)\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]MAC PRINT SUCCESS\n"));
    EXPECT_EQ("00:0a:f5:12:34:56\n", run.files.at("root/WIFIAddr"));
}

TEST(ArmBuild, ends_with_status_1_when_target_memory_ends) {
    EXPECT_EQ(1, run_on_arm("mac/combo-short", {"-M"}).status);
}

TEST(ArmBuild, runs_the_ath6kl_loopback) {
    const BenchRun run = run_on_arm("loopback/ath6kl-pass", {"-l"});
    EXPECT_EQ(ath6kl_steps, run.files.at("chip.log"));
    EXPECT_THAT(run.err, HasSubstr("[WIFI]val1=236 val2=0\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]LOOPBACK SUCCESS\n"));
}

TEST(ArmBuild, reads_the_address_from_the_register_files) {
    const BenchRun run = run_on_arm("mac/ath6kl-same", {"-M"});
    EXPECT_EQ("00:0a:f5:12:34:56\n", run.files.at("root/WIFIAddr"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]MAC PRINT SUCCESS\n"));
}

TEST(ArmBuild, switches_the_loopback_off_when_it_is_killed) {
    const BenchRun run = on_arm("loopback/broadcom-slow", {"-l"}).signal("TERM@3000ms").run();
    EXPECT_EQ("0\n", run.files.at("parameters/usbloop_enable"));
    EXPECT_EQ(0, run.status);
}

} // namespace

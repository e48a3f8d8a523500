// SPDX-License-Identifier: Apache-2.0
// The bench itself: its world is private, its counterparts do what a scenario says.

#include "bench_run.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using namespace bench_test;
using namespace testing;

BenchRun shell(Bench bench, const std::string& script) {
    return bench.option("--tool", "/bin/sh").args({"-c", script}).run();
}

TEST(BenchWorld, hands_the_status_of_the_tool_on) {
    EXPECT_EQ(shell(Bench(), "exit 7").status, 7);
    EXPECT_EQ(shell(Bench(), "kill -KILL $$").status, 137);
}

TEST(BenchWorld, keeps_what_the_tool_writes_from_the_machine) {
    const BenchRun run = shell(Bench(), "echo left > /tmp/wivex-private; echo x > /root/file");
    EXPECT_EQ(run.files.at("tmp/wivex-private"), "left\n");
    EXPECT_EQ(run.files.at("root/file"), "x\n");
    EXPECT_FALSE(std::filesystem::exists("/tmp/wivex-private"));
}

TEST(BenchWorld, shares_no_memory_by_name_with_the_machine) {
    EXPECT_EQ(shell(Bench(), "echo x > /dev/shm/wivex-private").status, 0);
    EXPECT_FALSE(std::filesystem::exists("/dev/shm/wivex-private"));
}

TEST(BenchWorld, sees_its_own_processes_only) {
    EXPECT_EQ(shell(Bench(), "killall udhcpd; echo $?").out, "1\n");
}

TEST(BenchWorld, lists_the_chosen_module_in_the_kernels_form) {
    EXPECT_THAT(shell(Bench().line("module 0cf3:9378"), "cat /proc/bus/usb/devices").out,
                HasSubstr("P:  Vendor=0cf3 ProdID=9378 Rev= 0.01\n"));
    EXPECT_THAT(shell(Bench().line("module none"), "cat /proc/bus/usb/devices").out,
                testing::Not(HasSubstr("0cf3")));
}

TEST(BenchWorld, has_the_interface_in_the_state_of_the_scenario) {
    EXPECT_EQ(shell(Bench(), "cat /sys/class/net/wlan0/flags").out, "0x1003\n");
    EXPECT_EQ(shell(Bench().line("interface down"), "cat /sys/class/net/wlan0/flags").out,
              "0x1002\n");
    EXPECT_EQ(shell(Bench().line("interface absent"), "ls /sys/class/net").out, "lo\n");
}

TEST(BenchWorld, takes_an_address_by_a_real_exchange) {
    const BenchRun run = shell(Bench(), "udhcpc -i wlan0 -n -q 2>&1; ifconfig wlan0");
    EXPECT_THAT(run.out, HasSubstr("obtained from 192.168.49.1"));
    EXPECT_THAT(run.out, HasSubstr("inet 192.168.49."));
}

TEST(BenchWorld, hides_and_replaces_programs) {
    EXPECT_EQ(shell(Bench().line("program udhcpc missing"), "command -v udhcpc; echo $?").out,
              "127\n");
    EXPECT_EQ(shell(Bench().line("program udhcpc runs \"echo mine $1\""), "udhcpc x").out,
              "mine x\n");
}

TEST(BenchWorld, refuses_a_scenario_that_it_does_not_understand) {
    const BenchRun run = shell(Bench().line("supplicant sings"), "true");
    EXPECT_EQ(run.status, 125);
    EXPECT_THAT(run.err, HasSubstr("scenario:1: not understood: supplicant sings"));
}

// A client that reads nothing for a while still gets the replies, and then the events in order.
TEST(BenchSupplicant, keeps_a_flood_of_events_in_order_and_answers_meanwhile) {
    const BenchRun run =
        Bench("event-flood")
            .line("program udhcpc runs \"sleep 1\"")
            .line("program killall runs \"exit 0\"")
            .line("supplicant sends \"<3>MANY\" 1000 times on \"SELECT_NETWORK 0 \" after 2ms")
            .line("supplicant sends \"<3>LAST\" on \"SELECT_NETWORK 0 \" after 3ms")
            .args({"-w", "-u", "-m", "1"})
            .run();
    EXPECT_THAT(run.out, HasSubstr("<3>MANY\n<3>LAST\n<3>CTRL-EVENT-DISCONNECTED"));
    EXPECT_EQ(run.err, "");
}

TEST(BenchWorld, starts_the_tool_through_a_program_that_is_named_by_its_path) {
    const BenchRun run = Bench().option("--under", "/usr/bin/env").args({"-v"}).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Wivex Version 2.0\n"));
}

TEST(BenchWorld, lets_the_clock_run_faster) {
    const BenchRun run = shell(Bench().faster(20), "sleep 10");
    EXPECT_LT(run.wall_ms, 5000);
}

TEST(BenchWorld, ends_with_a_run_that_takes_too_long) {
    EXPECT_TRUE(Bench()
                    .option("--tool", "/bin/sh")
                    .args({"-c", "sleep 60"})
                    .at_most(std::chrono::seconds(1))
                    .run()
                    .timed_out);
}

TEST(BenchSignals, reach_the_tool_at_the_planned_time) {
    const BenchRun run = shell(Bench().signal("INT@100ms"), "exec sleep 5");
    EXPECT_EQ(run.status, 130);
    EXPECT_LT(run.wall_ms, 2000);
}

TEST(BenchSignals, reach_the_tool_while_a_child_runs) {
    const BenchRun run =
        shell(Bench().signal("TERM@child:sleep"), "trap 'echo got; exit 3' TERM; sleep 1; exit 4");
    EXPECT_EQ(run.out, "got\n");
    EXPECT_EQ(run.status, 3);
}

} // namespace

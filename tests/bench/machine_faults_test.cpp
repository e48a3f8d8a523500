// SPDX-License-Identifier: Apache-2.0
// A machine in trouble: no room, no descriptors, no memory, no programs, no kernel files. Each time
// there is a message and a verdict, and every result that could be written is written.

#include "bench_run.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace bench_test {
namespace {

using namespace testing;

constexpr const char* same_address = "driver answers address with 00:0a:f5:12:34:56\n"
                                     "driver answers variable cur_etheraddr with 00:0a:f5:12:34:56";

// Client sockets stand in /tmp whatever the configuration says; the supplicant's can be elsewhere.
constexpr const char* supplicant_elsewhere = "config ctrl_iface=/run/wpa_supplicant";

Bench bench_with(const std::string& scenario, const std::vector<std::string>& lines) {
    Bench bench(scenario);
    for (const std::string& line : lines) {
        bench.line(line);
    }
    bench.faster(10);
    return bench;
}

// ---- disks -------------------------------------------------------------------------------------

void expect_end_with(const BenchRun& run, const std::string& error) {
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, error);
}

TEST(FullDisk, of_the_result_file_is_told) {
    const BenchRun run =
        bench_with("", {quick_address, "folder /root full"}).args({"-w", "-m", "2"}).run();
    expect_end_with(run, "[WIFI]Unable to write Result File: /root/WIFIResult: No space left on "
                         "device\n");
    EXPECT_THAT(run.out, Not(HasSubstr("Updated")));
    EXPECT_THAT(run.out, EndsWith(cleanup));
}

TEST(FullDisk, of_the_result_file_is_told_by_an_interrupted_run_too) {
    const BenchRun run = run_wlan(
        Bench("scan-never-ends").line("folder /root full").signal("INT@command:SCAN+300ms"), 2);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, EndsWith("/root/WIFIResult: No space left on device\n"));
    EXPECT_THAT(run.out, EndsWith(cleanup_of_a_session + done));
}

TEST(FullDisk, of_the_address_file_is_told_and_leaves_the_verdict) {
    const BenchRun run = bench_with("", {same_address, "folder /root full"})
                             .args({"-M", "-m", "1", "-R/root/results"})
                             .run();
    EXPECT_THAT(run.err, HasSubstr("File not able to write: No space left on device\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]MAC PRINT SUCCESS\n"));
}

TEST(FullDisk, of_the_listing_fails_the_scan_and_is_no_shielded_room) {
    const BenchRun run = bench_with("scan-listing", {"folder /tmp full"}).args({"-S"}).run();
    EXPECT_THAT(run.err, HasSubstr("[WIFI]\"/tmp/output\"File write error: No space left on "
                                   "device\n"));
    EXPECT_THAT(run.out, Not(HasSubstr("SHIELD")));
    EXPECT_EQ(run.result_file(), result_of(5, 1));
}

TEST(FullDisk, of_the_status_file_is_told) {
    const BenchRun run = bench_with("scan-listing", {"folder /root full"})
                             .args({"-SLINE", "-D/root/status", "-R/tmp/results"})
                             .run();
    EXPECT_THAT(run.err, HasSubstr("[WIFI]not able to open file\n: No space left on device\n"));
    EXPECT_EQ(run.files.at("tmp/results"), result_of(5, 0));
}

TEST(FullDisk, of_tmp_does_not_disturb_a_session) {
    const BenchRun run =
        bench_with("", {quick_address, "folder /tmp full"}).args({"-w", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(), result_of(8, 0));
}

TEST(ReadOnlyTmp, keeps_the_sessions_from_being_opened) {
    const std::vector<std::string> lines{supplicant_elsewhere, "folder /tmp read-only"};
    const BenchRun wlan = bench_with("", lines).args({"-w"}).run();
    EXPECT_THAT(wlan.out, HasSubstr("[WIFI]Unable to open sockets!!\n"));
    EXPECT_EQ(wlan.result_file(), result_of(8, 2));
    const BenchRun client = bench_with("", lines).args({"-c"}).run();
    EXPECT_EQ(client.result_file(), result_of(9, 1));
    const BenchRun device = bench_with("", lines).args({"-d"}).run();
    EXPECT_EQ(device.result_file(), result_of(6, 1));
    const BenchRun owner = bench_with("", lines).args({"-g"}).run();
    EXPECT_EQ(owner.result_file(), result_of(7, 1));
}

TEST(ReadOnlyTmp, fails_the_scan) {
    const BenchRun run = bench_with("scan-listing", {"folder /tmp read-only"}).args({"-S"}).run();
    EXPECT_THAT(run.err,
                HasSubstr("[WIFI]\"/tmp/output\"File open error: Read-only file system\n"));
    EXPECT_THAT(run.err, HasSubstr("[WIFI]not able to open file\n: Read-only file system\n"));
    EXPECT_EQ(run.result_file(), result_of(5, 1));
}

TEST(ReadOnlyRoot, is_told_of_both_files_and_leaves_the_verdict) {
    const BenchRun run =
        bench_with("", {same_address, "folder /root read-only"}).args({"-M", "-m", "1"}).run();
    expect_end_with(run, "File not able to write: Read-only file system\n"
                         "[WIFI]Unable to open Result File: ");
    EXPECT_THAT(run.out, HasSubstr("[WIFI]MAC PRINT SUCCESS\n"));
    EXPECT_THAT(run.out, EndsWith("/root/WIFIResult\n" + cleanup));
}

TEST(MissingTmp, keeps_the_session_from_being_opened) {
    const BenchRun run =
        bench_with("", {supplicant_elsewhere, "folder /tmp missing"}).args({"-w"}).run();
    EXPECT_EQ(run.result_file(), result_of(8, 2));
}

// ---- descriptors -------------------------------------------------------------------------------

// How many are needed depends on the machine's libraries, so all small numbers are tried.
class FewDescriptors : public testing::TestWithParam<int> {
protected:
    static BenchRun run_with(Bench bench, const std::vector<std::string>& arguments) {
        return bench.option("--limit-files", std::to_string(GetParam())).args(arguments).run();
    }
    static void expect_message_and_verdict(const BenchRun& run) {
        ASSERT_EQ(run.status, 0) << run.err;
        const bool without_configuration =
            run.err.find("Configuration file problem") != std::string::npos;
        EXPECT_EQ(without_configuration, !run.result_file()) << run.out << run.err;
    }
};

TEST_P(FewDescriptors, end_the_wlan_test_with_a_verdict) {
    expect_message_and_verdict(run_with(bench_with("", {quick_address}), {"-w", "-m", "1"}));
}

TEST_P(FewDescriptors, end_the_client_test_with_a_verdict) {
    expect_message_and_verdict(run_with(bench_with("", {quick_address}), {"-c", "-m", "1"}));
}

TEST_P(FewDescriptors, end_the_scan_with_a_verdict) {
    expect_message_and_verdict(run_with(bench_with("scan-listing", {}), {"-S", "-m", "1"}));
}

TEST_P(FewDescriptors, end_the_address_check_with_a_verdict) {
    expect_message_and_verdict(run_with(bench_with("mac/ath6kl-same", {}), {"-M", "-m", "1"}));
}

INSTANTIATE_TEST_SUITE_P(Numbers, FewDescriptors, testing::Range(4, 11));

TEST(NoDescriptor, for_the_second_connection_leaves_no_socket_and_a_verdict) {
    const BenchRun run =
        bench_with("", {quick_address}).option("--limit-files", "6").args({"-w", "-m", "3"}).run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Unable to open sockets!!\n"));
    EXPECT_EQ(run.result_file(), result_of(8, 6));
    EXPECT_THAT(run.sockets(), IsEmpty());
}

// ---- memory ------------------------------------------------------------------------------------

constexpr int least_kb = 3000;
constexpr int most_kb = 12000;
constexpr int status_of_loader = 127;

constexpr const char* earlier_results = "file /root/WIFIResult \"Test case 1 fail # 3\\n\"";

BenchRun run_within(int kilobytes, const std::vector<std::string>& arguments,
                    const std::string& line = "") {
    return Bench()
        .line("module none")
        .line(line)
        .option("--under", "prlimit --as=" + std::to_string(kilobytes * 1024))
        .args(arguments)
        .run();
}

TEST(NoMemory, never_crashes_however_little_there_is) {
    if (run_within(most_kb, {"-A"}).status != 0) {
        GTEST_SKIP() << "this build needs more address space";
    }
    bool told = false;
    for (int kilobytes = least_kb; kilobytes < most_kb; kilobytes += 32) {
        const BenchRun run = run_within(kilobytes, {"-A"});
        if (run.status == status_of_loader) {
            continue; // the tool has not begun yet
        }
        ASSERT_EQ(run.status, 0) << "with " << kilobytes << " KB: " << run.err;
        const bool ended_early = run.err.find("[WIFI]ERROR:run ended early: ") != std::string::npos;
        told = told || ended_early;
        if (!ended_early) {
            EXPECT_THAT(run.out, EndsWith("[WIFI]ERROR:create softAP problem\n"));
            kilobytes += 1024;
        }
    }
    EXPECT_TRUE(told);
}

TEST(NoMemory, before_anything_is_recorded_leaves_the_result_file_of_an_earlier_run) {
    // A path that is longer than what is left of the first piece of memory.
    const std::string long_path = "-R/" + std::string(130'000, 'x');
    for (int kilobytes = least_kb; kilobytes < most_kb; kilobytes += 32) {
        const BenchRun run = run_within(kilobytes, {"-A", long_path}, earlier_results);
        if (run.err == "[WIFI]ERROR:run ended early: std::bad_alloc\n") {
            EXPECT_EQ(run.status, 0);
            EXPECT_EQ(run.result_file(), "Test case 1 fail # 3\n");
            EXPECT_THAT(run.out, Not(HasSubstr("[WIFI]ResultFile: ")));
            return;
        }
    }
    GTEST_SKIP() << "this build needs more address space";
}

TEST(NoMemory, in_the_middle_of_a_run_is_told_with_the_results_that_are_lost) {
    const BenchRun run =
        bench_with(
            "", {"interface down", "program ifconfig runs \"prlimit --pid $(pidof wivex) --as=1\""})
            .args({"-M", "-R/" + std::string(130'000, 'x')})
            .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "[WIFI]ERROR:run ended early: std::bad_alloc\n"
                       "[WIFI]Unable to write results\n");
}

TEST(NoMemory, for_further_children_fails_what_needs_them_and_the_run_goes_on) {
    const BenchRun run =
        bench_with("", {"program udhcpc runs \"exit 0\"",
                        "program killall runs \"prlimit --pid $(pidof wivex) --as=1\"",
                        "config check_iperf=yes"})
            .args({"-w", "-m", "2"})
            .run();
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.err, EndsWith("Unable to run Iperf in Client mode!!!\n"
                                  "Fail to run dhclient!!!\nFail to start udhcpc!!!\n"
                                  "Unable to run Iperf in Client mode!!!\n"));
    EXPECT_EQ(run.result_file(), result_of(8, 2));
    EXPECT_THAT(run.sockets(), IsEmpty());
}

TEST(NoMemory, for_the_children_of_an_ath6kl_loopback_is_no_pass) {
    const BenchRun run =
        bench_with(
            "loopback/ath6kl-pass",
            {"interface down", "program ifconfig runs \"prlimit --pid $(pidof wivex) --as=1\""})
            .args({"-l"})
            .run();
    EXPECT_THAT(run.err, HasSubstr("[WIFI]Unable to start shell: Cannot allocate memory\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]### LOOPBACK FAIL ###\n"));
}

// ---- files that break off ----------------------------------------------------------------------

// Reading it from its beginning fails with an input/output error.
constexpr const char* unreadable = "/proc/self/mem";

TEST(UnreadableFile, of_the_previous_status_fails_the_scan_and_is_told) {
    const BenchRun run =
        bench_with("scan-listing", {}).args({"-SLINE", std::string("-D") + unreadable}).run();
    EXPECT_THAT(run.err, HasSubstr("[WIFI]File: Input/output error\n"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]SCAN FAIL\n"));
    EXPECT_EQ(run.result_file(), result_of(5, 1));
}

TEST(UnreadableFile, of_the_configuration_is_a_problem_and_no_empty_one) {
    const BenchRun run = Bench().args({"-w", std::string("-F") + unreadable}).run();
    EXPECT_THAT(run.out, EndsWith("[WIFI]Reading Conf file: /proc/self/mem Failed\n"));
    EXPECT_THAT(run.err, HasSubstr("[WIFI]Configuration file problem."));
}

// ---- programs and kernel files -----------------------------------------------------------------

struct MissingProgram {
    const char* name;
    const char* scenario;
    std::string lines;
    const char* mode;
    /// What stands on the two streams, among other things.
    const char* err;
    const char* out;
    std::string results;
};

void PrintTo(const MissingProgram& program, std::ostream* out) {
    *out << program.name;
}

class RunWithoutAProgram : public TestWithParam<MissingProgram> {};

TEST_P(RunWithoutAProgram, is_told_and_goes_on_to_its_verdict) {
    const BenchRun run =
        bench_with(GetParam().scenario, {GetParam().lines}).args({GetParam().mode}).run();
    EXPECT_THAT(run.err, HasSubstr(GetParam().err));
    EXPECT_THAT(run.out, HasSubstr(GetParam().out));
    EXPECT_EQ(run.result_file(), GetParam().results);
}

INSTANTIATE_TEST_SUITE_P(
    Programs, RunWithoutAProgram,
    Values(MissingProgram{"udhcpc_fails_the_client_test", "", "program udhcpc missing", "-c",
                          "Fail to run dhclient!!!\nFail to start udhcpc!!!\n", "",
                          result_of(9, 1)},
           MissingProgram{"udhcpc_does_not_fail_the_wlan_test", "", "program udhcpc missing", "-w",
                          "Fail to run dhclient!!!\nFail to start udhcpc!!!\n",
                          "ERROR:UDHCHPC START FAILED\n", result_of(8, 0)},
           MissingProgram{"iperf_passes", "",
                          quick_address +
                              std::string("\nprogram iperf missing\nconfig check_iperf=yes"),
                          "-w", "iperf: not found\n", "", result_of(8, 0)},
           MissingProgram{"ifconfig_leaves_the_interface_down", "",
                          quick_address + std::string("\nprogram ifconfig missing\ninterface down"),
                          "-w", "ifconfig: not found\n", "",
                          "Test case 1 passed \nTest case 2 fail # 1\nTest case 8 passed \n"},
           MissingProgram{"ifconfig_of_the_group_owner_passes", "p2p-owner",
                          quick_address + std::string("\nprogram ifconfig missing"), "-d",
                          "ifconfig: not found\n", "", result_of(6, 0)},
           MissingProgram{"udhcpd_of_the_group_owner_passes", "p2p-owner",
                          quick_address + std::string("\nprogram udhcpd missing"), "-d",
                          "udhcpd: not found\n", "", result_of(6, 0)},
           MissingProgram{"mount_leaves_the_module_unseen", "scan-refused",
                          "folder /proc/bus/usb missing\nprogram mount missing", "-w",
                          "mount: not found\n", "[WIFI]ERROR:Module not inserted",
                          "Test case 1 fail # 1\nTest case 2 passed \nTest case 8 fail # 1\n"}),
    [](const auto& program) { return program.param.name; });

TEST(MissingKillall, can_be_interrupted_though_it_is_called_for_ever) {
    const BenchRun run = Bench()
                             .line("program udhcpc runs \"exit 0\"")
                             .line("program killall missing")
                             .signal("INT@2500ms")
                             .args({"-w"})
                             .run();
    EXPECT_THAT(run.err, HasSubstr("killall: not found\n"));
    EXPECT_EQ(run.result_file(), result_of(8, 0));
    EXPECT_THAT(run.sockets(), IsEmpty());
}

TEST(MissingKernelFile, of_the_interface_is_filed_and_the_run_goes_on) {
    const BenchRun run =
        bench_with("scan-refused", {"config wifidev=/sys/class/absent"}).args({"-w"}).run();
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 fail # 1\n"
                                 "Test case 8 fail # 1\n");
}

} // namespace
} // namespace bench_test

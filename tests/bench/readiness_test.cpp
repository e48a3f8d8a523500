// SPDX-License-Identifier: Apache-2.0
// Module and driver as the kernel's files show them, and what the run makes of it.

#include "bench_run.hpp"
#include "expected.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace bench_test {
namespace {

using namespace testing;

const std::string not_inserted = "[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n"
                                 "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n";
const std::string not_insmoded = "[WIFI]ERROR:WiFi driver is not insmoded properly, Please check "
                                 "WiFi driver status...\n";
const std::string not_up = "[WIFI]ERROR:WiFi network interface not up(check supplicant)\n";

struct Module {
    const char* name;
    const char* ids;
    const char* verdict;
};

void PrintTo(const Module& module, std::ostream* out) {
    *out << module.ids;
}

class ModuleOnTheBench : public testing::TestWithParam<Module> {};

TEST_P(ModuleOnTheBench, is_known_by_its_ids) {
    const BenchRun run =
        run_wlan(Bench("scan-refused").line(std::string("module ") + GetParam().ids));
    EXPECT_THAT(run.out, HasSubstr(std::string("\n\n") + GetParam().verdict +
                                   "[WIFI]MODULE CONNECTED\n[WIFI]WIFI DRIVER READY\n"));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 8 fail # 1\n");
}

INSTANTIATE_TEST_SUITE_P(
    Known, ModuleOnTheBench,
    testing::Values(Module{"chip_1", "0cf3:1022",
                           "[WIFI]Chip type is = 1\n"
                           "[WIFI]Chip vendor id = 0a5c and product id 1022\n"},
                    Module{"chip_2", "0cf3:9378",
                           "[WIFI]Chip type is = 2\n"
                           "[WIFI]Chip vendor id = 0a5c and product id 9378\n"},
                    Module{"chip_4", "0a5c:bd1d",
                           "[WIFI]Chip type is = 4\n"
                           "[WIFI]Chip vendor id = 0a5c and product id bd1d\n"},
                    Module{"chip_5", "9e0c:20a0",
                           "[WIFI]Chip type is = 5\n"
                           "[WIFI]Chip vendor id = 0a5c and product id 20a0\n"}),
    [](const auto& module) { return module.param.name; });

TEST(ModuleCheckRun, files_an_absent_module_and_goes_on) {
    for (const char* module : {"module none", "module 148f:3572"}) {
        const BenchRun run = run_wlan(Bench("scan-refused").line(module), 2);
        EXPECT_THAT(run.out, HasSubstr("\n\n" + not_inserted + "[WIFI]WIFI DRIVER READY\n" +
                                       "Fail to send Scan Command!!!\n"));
        EXPECT_THAT(run.err, Not(HasSubstr("Module")));
        EXPECT_EQ(run.result_file(), "Test case 1 fail # 2\nTest case 2 passed \n"
                                     "Test case 8 fail # 2\n");
    }
}

TEST(ModuleCheckRun, takes_the_module_that_comes_first_in_the_list) {
    const BenchRun run =
        run_wlan(Bench("scan-refused")
                     .set("device_type", "usb")
                     .set("usbdevlist", "/tmp/list")
                     .line("file /tmp/list \"P:  Vendor=0cf3 ProdID=9378 Rev= 0.01\\n"
                           "P:  Vendor=0cf3 ProdID=1022 Rev= 0.01\\n\""));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Chip type is = 2\n"
                                   "[WIFI]Chip vendor id = 0a5c and product id 9378\n"));
}

TEST(ModuleCheckRun, takes_a_list_without_a_final_newline) {
    const BenchRun run = run_wlan(Bench("scan-refused")
                                      .set("device_type", "usb")
                                      .set("usbdevlist", "/tmp/list")
                                      .line("file /tmp/list \"P:  Vendor=9e0c ProdID=20a0\""));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Chip type is = 5\n"));
}

TEST(ModuleCheckRun, finds_no_module_on_the_pci_bus) {
    const BenchRun run =
        run_wlan(Bench("scan-refused")
                     .set("device_type", "PCIE")
                     .line("file /proc/bus/pci/devices \"0100\\t14e4aa31\\t10\\n\""));
    EXPECT_THAT(run.out, HasSubstr(not_inserted));
}

TEST(ModuleCheckRun, names_an_unreadable_list_only_with_debug) {
    Bench bench = Bench("supplicant-absent").line("folder /proc/bus/usb missing");
    EXPECT_THAT(run_wlan(Bench(bench)).out, Not(HasSubstr("Unable to open file")));
    EXPECT_THAT(Bench(bench).args({"-w", "-u", "-m", "1"}).run().out,
                HasSubstr("\nERROR:Unable to open file /proc/bus/usb/devices\n" + not_inserted));
}

// ---- start-up ----------------------------------------------------------------------------------

TEST(StartUp, mounts_a_missing_device_list) {
    const BenchRun run = Bench("supplicant-absent")
                             .line("folder /proc/bus/usb missing")
                             .line("program mount runs \"echo mount \\\"$@\\\"; exit 1\"")
                             .args({"-w", "-m", "1"})
                             .run();
    EXPECT_THAT(run.out, HasSubstr("wivex.cfg\nmount -t usbfs none /proc/bus/usb/\n"
                                   "[WIFI]USBFS is Mounted\n\n" +
                                   not_inserted));
    EXPECT_THAT(run.out, Not(HasSubstr("[WIFI]USBFS is already Mounted")));
}

TEST(StartUp, mounts_nothing_when_the_list_is_there) {
    const BenchRun run =
        run_wlan(Bench("supplicant-absent").line("program mount runs \"echo mount called\""));
    EXPECT_THAT(run.out, Not(HasSubstr("mount called")));
}

TEST(StartUp, brings_an_interface_up_that_is_down) {
    const BenchRun run = run_wlan(Bench("scan-refused").line("interface down"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]WIFI DRIVER READY\n"));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 8 fail # 1\n");
}

TEST(StartUp, calls_ifconfig_only_for_an_interface_that_is_down) {
    const char* shown = "program ifconfig runs \"echo called: ifconfig \\\"$@\\\"\"";
    const BenchRun down = run_wlan(Bench("scan-refused").line("interface down").line(shown));
    EXPECT_THAT(down.out, HasSubstr("[WIFI]USBFS is Mounted\ncalled: ifconfig wlan0 up\n\n"));
    const BenchRun up = run_wlan(Bench("scan-refused").line(shown));
    EXPECT_THAT(up.out, Not(HasSubstr("called: ifconfig")));
    const BenchRun absent = run_wlan(Bench("scan-refused").line("interface absent").line(shown));
    EXPECT_THAT(absent.out, Not(HasSubstr("called: ifconfig")));
}

// ---- driver ------------------------------------------------------------------------------------

TEST(DriverCheckRun, files_a_missing_driver_and_goes_on) {
    const BenchRun run = run_wlan(Bench("scan-refused").line("interface absent"));
    EXPECT_THAT(run.out, HasSubstr("[WIFI]MODULE CONNECTED\n" + not_insmoded +
                                   "Fail to send Scan Command!!!\n"));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 fail # 1\n"
                                 "Test case 8 fail # 1\n");
}

TEST(DriverCheckRun, files_an_interface_that_stays_down_and_goes_on) {
    const BenchRun run =
        run_wlan(Bench("interface-down").line("supplicant answers \"SCAN\" with \"FAIL\\n\""));
    EXPECT_THAT(run.out,
                HasSubstr("[WIFI]MODULE CONNECTED\n" + not_up + "Fail to send Scan Command!!!\n"));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 fail # 1\n"
                                 "Test case 8 fail # 1\n");
}

struct Flags {
    const char* name;
    const char* text;
    bool up;
};

void PrintTo(const Flags& flags, std::ostream* out) {
    *out << flags.text;
}

class FlagsFile : public testing::TestWithParam<Flags> {};

TEST_P(FlagsFile, is_read_as_decimal_digits_behind_two_characters) {
    const BenchRun run =
        run_wlan(Bench("scan-refused")
                     .set("wifidev", "/tmp/net")
                     .line(std::string("file /tmp/net/wlan0/flags \"") + GetParam().text + "\""));
    EXPECT_THAT(run.out, HasSubstr(GetParam().up ? "[WIFI]WIFI DRIVER READY\n" : not_up));
}

INSTANTIATE_TEST_SUITE_P(Texts, FlagsFile,
                         testing::Values(Flags{"up", "0x1003\\n", true},
                                         Flags{"down", "0x1002\\n", false},
                                         Flags{"hexadecimal_digit", "0x100b\\n", false},
                                         Flags{"empty", "", false}),
                         [](const auto& flags) { return flags.param.name; });

} // namespace
} // namespace bench_test

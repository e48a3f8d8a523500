// SPDX-License-Identifier: Apache-2.0
// The command line, as the whole program obeys it.

#include "bench_run.hpp"
#include "expected.hpp"
#include "text_parts.hpp"
#include "usage_text.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace bench_test {
namespace {

using namespace testing;
using test_texts::usage_text;

void expect_only_usage(const std::vector<std::string>& arguments) {
    const BenchRun run = Bench().args(arguments).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, banner + usage_text);
    EXPECT_EQ(run.result_file(), std::nullopt);
    EXPECT_TRUE(run.commands().empty());
}

TEST(CommandLineRun, without_a_mode_shows_the_usage_and_reads_no_configuration) {
    expect_only_usage({});
    expect_only_usage({"-m", "5"});
    expect_only_usage({"-u", "-i", "3", "-R/tmp/result"});
}

TEST(CommandLineRun, with_an_odd_option_shows_the_usage) {
    expect_only_usage({"-w", "-?"});
    expect_only_usage({"-w", "-C", "x"});
    expect_only_usage({"-w", "-s", "x"});
    expect_only_usage({"-w", "-x"});
    expect_only_usage({"-w", "-m"});
    expect_only_usage({"-w", "-h"});
}

TEST(CommandLineRun, shows_its_version) {
    const BenchRun run = Bench().args({"-w", "-v"}).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, banner + "\n\n[WIFI]Wivex Version 2.0\n"
                                "[WIFI]This build is compiled on May 13 2016, 02:36:07.\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.result_file(), std::nullopt);
}

TEST(CommandLineRun, takes_a_count_of_0_or_less_as_1) {
    for (const char* count : {"0", "-3"}) {
        const BenchRun run = Bench("scan-refused").args({"-w", "-m", count}).run();
        EXPECT_EQ(run.status, 0);
        EXPECT_THAT(run.out, StartsWith(banner + one_iteration));
        EXPECT_EQ(times(run.out, "[WIFI]MODULE CONNECTED\n"), 1);
        EXPECT_EQ(run.commands(), std::vector<std::string>{"SCAN"});
    }
}

TEST(CommandLineRun, runs_as_many_iterations_as_it_is_told) {
    const BenchRun run = run_wlan(Bench("scan-refused"), 3);
    EXPECT_EQ(times(run.out, "[WIFI]MODULE CONNECTED\n"), 3);
    EXPECT_EQ(run.commands(), (std::vector<std::string>{"SCAN", "SCAN", "SCAN"}));
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 8 fail # 3\n");
    EXPECT_GT(run.wall_ms, 8900); // a second to open and two to rest, three times
}

// ---- the configuration file --------------------------------------------------------------------

struct Choice {
    const char* answer;
    const char* file;
};

TEST(ConfigurationChoice, is_asked_for_and_obeyed) {
    for (const auto& [answer, file] : std::vector<Choice>{{"0\n", "wivex.cfg"},
                                                          {"1\n", "wivex.cfg"},
                                                          {"2\n", "wivex_qca.cfg"},
                                                          {"3\n", "wivex_softap.cfg"},
                                                          {"none\n", "wivex.cfg"},
                                                          {"", "wivex.cfg"}}) {
        const BenchRun run =
            Bench("supplicant-absent").args({"-w", "-m", "1", "-F"}).input(answer).run();
        EXPECT_THAT(run.out, StartsWith(banner +
                                        "Enter configuration file to be used\n\n1: BCRM\n2: "
                                        "QCA\n3: SOFTAP \n[DEFAULT: None]\n\n"
                                        "[WIFI]Reading Conf file: /lib/modules/wifi/" +
                                        file + "\n[WIFI]USBFS"));
        EXPECT_EQ(run.status, 0);
    }
}

TEST(ConfigurationChoice, beyond_the_list_runs_without_a_configuration) {
    const BenchRun run = Bench().args({"-w", "-m", "1", "-F"}).input("7\n").run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, banner +
                           "Enter configuration file to be used\n\n1: BCRM\n2: QCA\n3: SOFTAP \n"
                           "[DEFAULT: None]\n\n"
                           "[WIFI]USBFS is already Mounted\n[WIFI]USBFS is Mounted\n\n"
                           "[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n"
                           "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n"
                           "[WIFI]ERROR:WiFi driver is not insmoded properly, Please check WiFi "
                           "driver status...\n"
                           "[WIFI]Unable to open sockets!!\n" +
                           regular_end);
    EXPECT_EQ(run.err, "unable to open sockets\n");
    EXPECT_EQ(run.result_file(), "Test case 1 fail # 1\nTest case 2 fail # 1\n"
                                 "Test case 8 fail # 2\n");
}

TEST(ConfigurationChoice, takes_a_path_only_when_it_is_attached) {
    const BenchRun run =
        Bench("supplicant-absent").args({"-F", "/x", "-w", "-m", "1"}).input("2\n").run();
    EXPECT_THAT(run.out, HasSubstr("[DEFAULT: None]\n\n[WIFI]Reading Conf file: "
                                   "/lib/modules/wifi/wivex_qca.cfg\n"));
}

TEST(ConfigurationChoice, shows_its_question_before_it_reads_the_answer) {
    const auto run = Bench("supplicant-absent").args({"-w", "-m", "1", "-F"}).start();
    ASSERT_TRUE(run->shows("[DEFAULT: None]\n\n", std::chrono::seconds(5)));
    run->type("2\n");
    EXPECT_TRUE(run->shows("wivex_qca.cfg\n", std::chrono::seconds(5)));
    EXPECT_EQ(run->finish().status, 0);
}

TEST(ConfigurationChoice, can_be_a_file_of_the_user) {
    const BenchRun run =
        Bench()
            .line("file /tmp/my.cfg \"wifidev=/sys/class/net\\ninterface_name=wlan0\\n"
                  "ctrl_iface=/tmp/wpa_supplicant\\ngo_ssid=elsewhere\\ncolour=blue\\n\"")
            .args({"-w", "-m", "1", "-F/tmp/my.cfg"})
            .run();
    EXPECT_THAT(run.out, HasSubstr("[WIFI]Reading Conf file: /tmp/my.cfg\n"));
    EXPECT_THAT(run.out, HasSubstr("elsewhereis not found!!!\n"));
    EXPECT_EQ(run.err, "[WIFI]Unknown key value pair..\nskipping key = colour value = blue\n");
}

TEST(ConfigurationChoice, ends_the_run_when_the_file_cannot_be_read) {
    const BenchRun run =
        Bench().args({"-w", "-m", "1", "-F/tmp/absent.cfg", "-R/tmp/result"}).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, banner + "[WIFI]Reading Conf file: /tmp/absent.cfg\n"
                                "[WIFI]Reading Conf file: /tmp/absent.cfg Failed\n");
    EXPECT_EQ(run.err, "[WIFI]Configuration file problem.Plese check /root/WIFIResult for more "
                       "details\n");
    EXPECT_EQ(run.result_file(), std::nullopt);
    EXPECT_EQ(run.files.count("tmp/result"), 0U);
    EXPECT_TRUE(run.commands().empty());
}

TEST(ConfigurationChoice, ends_the_run_when_the_default_file_is_missing) {
    const BenchRun run = run_wlan(Bench().line("folder /lib/modules/wifi missing"));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, EndsWith("[WIFI]Reading Conf file: /lib/modules/wifi/wivex.cfg Failed\n"));
    EXPECT_EQ(run.err, "[WIFI]Configuration file problem.Plese check /root/WIFIResult for more "
                       "details\n");
}

TEST(ConfigurationChoice, skips_the_rest_of_an_over_long_line) {
    const std::string long_value(600, 'v');
    const BenchRun run = run_wlan(Bench("supplicant-absent").set("txpower", long_value));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr(checks)); // the lines around it were read
    EXPECT_THAT(run.err, Not(HasSubstr("vvv")));
    EXPECT_THAT(run.err, EndsWith("unable to open sockets\n"));
    EXPECT_GT(run.err.size(), std::string("unable to open sockets\n").size());
}

// ---- combined modes ----------------------------------------------------------------------------

TEST(ModeChoice, runs_only_the_p2p_device_test_when_the_legacy_test_is_chosen_too) {
    const BenchRun run = Bench("supplicant-absent").args({"-w", "-d", "-m", "1"}).run();
    EXPECT_EQ(run.result_file(), "Test case 1 passed \nTest case 2 passed \n"
                                 "Test case 6 fail # 1\nTest case 8 passed \n");
    EXPECT_GT(run.wall_ms, 11900); // this mode rests for 10 seconds after a failure
}

TEST(ModeChoice, softap_ends_after_the_checks_without_result_file_and_cleanup) {
    const BenchRun run = Bench().args({"-A", "-w", "-m", "5"}).run();
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, banner +
                           "[WIFI]Reading Conf file: /lib/modules/wifi/wivex_softap.cfg\n"
                           "[WIFI]USBFS is already Mounted\n[WIFI]USBFS is Mounted\n" +
                           checks + "[WIFI]ERROR:create softAP problem\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.result_file(), std::nullopt);
    EXPECT_TRUE(run.commands().empty());
    EXPECT_LT(run.wall_ms, 1900);
}

TEST(ModeChoice, softap_is_created_exactly_when_the_driver_check_fails) {
    for (const char* scenario : {"interface-absent", "interface-down"}) {
        const BenchRun run = Bench(scenario).args({"-A", "-m", "2"}).run();
        EXPECT_THAT(run.out, EndsWith("[WIFI]softAP created successfuly.\n"));
        EXPECT_EQ(run.result_file(), std::nullopt);
    }
}

TEST(ModeChoice, softap_reads_its_own_file_whatever_else_is_chosen) {
    const BenchRun run = Bench().args({"-A", "-F/tmp/my.cfg"}).run();
    EXPECT_THAT(run.out,
                HasSubstr("[WIFI]Reading Conf file: /lib/modules/wifi/wivex_softap.cfg\n"));
}

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// The legacy WLAN test from the first line of the console to the result file.

#include "bench_run.hpp"
#include "expected.hpp"
#include "legacy_console.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace bench_test {
namespace {

using namespace testing;

const std::string all_passed = "Test case 1 passed \nTest case 2 passed \nTest case 8 passed \n";
const std::string one_failure = "Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 1\n";
const std::string two_failures = "Test case 1 passed \nTest case 2 passed \nTest case 8 fail # 2\n";

const auto [scanned, listed, added, configured, selected, addressed, unmeasured] =
    test_texts::legacy_console("bench-ap");

// ---- the pass ----------------------------------------------------------------------------------

TEST(LegacyWlanRun, that_passes_shows_this_console) {
    const BenchRun run = run_wlan(Bench());
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "\n[WIFI]WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE\n"
                       "\n"
                       "[WIFI]This build is compiled on May 13 2016, 02:36:07.\n"
                       "[WIFI]Reading Conf file: /lib/modules/wifi/wivex.cfg\n"
                       "[WIFI]USBFS is already Mounted\n"
                       "[WIFI]USBFS is Mounted\n"
                       "\n"
                       "[WIFI]Chip type is = 3\n"
                       "[WIFI]Chip vendor id = 0a5c and product id bd27\n"
                       "[WIFI]MODULE CONNECTED\n"
                       "[WIFI]WIFI DRIVER READY\n"
                       "Scan Command Sent Successfully...\n"
                       "bench-apis found...\n"
                       "Scan_Results Command Sent Successfully...\n"
                       "Call to ADD_NETWORK is Successful...\n"
                       "Result of cmd_to_setnetwork function is 0\n"
                       "Call to SELECT_NETWORK is Successful...\n"
                       "Executing dhclient...\n"
                       "udhcpc -i wlan0 --now.\n"
                       "Command to udhcpc is successful...\n"
                       "IPERF not set in conf. file!!\n"
                       "DISABLE_NETWORK 0 \n"
                       "Call to DISABLE_NETWORK is successful...\n"
                       "[WIFI]Here at 217 wpa_ctrl_close...\n"
                       "Value of sigterm_var is 0 ...\n"
                       "[WIFI]Here at 217 wpa_ctrl_close...\n"
                       "Value of sigterm_var is 0 ...\n"
                       "[WIFI]ResultFile: /root/WIFIResult Updated\n"
                       "[WIFI]Cleanup\n"
                       "[WIFI]Set value of sigterm_var\n"
                       "[WIFI]Closing the ctrl sockets\n"
                       "[WIFI]Closing the Event sockets\n"
                       "[WIFI]Reset Value of sigterm_var\n");
    EXPECT_THAT(run.err, HasSubstr("obtained from 192.168.49.1")); // the DHCP client itself
    EXPECT_EQ(run.result_file(), all_passed);
    EXPECT_THAT(run.sockets(), IsEmpty());
}

TEST(LegacyWlanRun, that_passes_sends_these_commands) {
    const BenchRun run = run_wlan(Bench());
    EXPECT_THAT(run.commands(),
                ElementsAre("SCAN", "SCAN_RESULTS", "REMOVE_NETWORK all", "ADD_NETWORK",
                            "SET_NETWORK 0 ssid \"bench-ap\"", "SET_NETWORK 0 auth_alg OPEN",
                            "SET_NETWORK 0 proto RSN", "SET_NETWORK 0 key_mgmt WPA-PSK",
                            "SET_NETWORK 0 pairwise CCMP",
                            "SET_NETWORK 0 psk \"bench-pass-phrase\"", "SELECT_NETWORK 0 ",
                            "DISABLE_NETWORK 0 "));
}

TEST(LegacyWlanRun, keeps_the_streams_in_order_on_one_terminal) {
    const BenchRun run = run_wlan(Bench("iperf-server-absent")
                                      .line(quick_address)
                                      .line("program iperf runs \"echo measured\"")
                                      .streams_together());
    EXPECT_EQ(run.out, start + checks + addressed +
                           "measured\nRun Iperf Successful...\nDISABLE_NETWORK 0 \n"
                           "Call to DISABLE_NETWORK is successful...\n" +
                           closed + regular_end);
}

TEST(LegacyWlanRun, measures_traffic_with_the_real_program) {
    const BenchRun run = run_wlan(Bench("pass"));
    EXPECT_THAT(run.out, HasSubstr(addressed + "-----"));
    EXPECT_THAT(run.out, HasSubstr("Client connecting to 192.168.49.1, TCP port 5001\n"));
    EXPECT_THAT(run.out, HasSubstr("bits/sec\nDISABLE_NETWORK 0 \n"));
    EXPECT_THAT(run.err, EndsWith("Run Iperf Successful...\n"));
    EXPECT_EQ(run.result_file(), all_passed);
}

TEST(LegacyWlanRun, passes_when_iperf_finds_no_server) {
    const BenchRun run = run_wlan(Bench("iperf-server-absent"));
    EXPECT_THAT(run.err, EndsWith("Run Iperf Successful...\n"));
    EXPECT_EQ(run.result_file(), all_passed);
}

TEST(LegacyWlanRun, runs_iperf_for_any_word_but_no) {
    for (const char* word : {"0", "false", "NO"}) {
        const BenchRun run = run_wlan(Bench()
                                          .set("check_iperf", word)
                                          .line(quick_address)
                                          .line("program iperf runs \"echo iperf \\\"$@\\\"\""));
        EXPECT_THAT(run.out, HasSubstr("iperf -c 192.168.49.1 -i 1\n"));
        EXPECT_EQ(run.err, "Run Iperf Successful...\n");
    }
    const BenchRun empty = run_wlan(Bench().set("check_iperf", "").line(quick_address));
    EXPECT_THAT(empty.out, HasSubstr(unmeasured));
}

TEST(LegacyWlanRun, goes_on_without_an_address) {
    const BenchRun run = run_wlan(Bench("dhcp-server-absent"));
    EXPECT_EQ(run.out, start + checks + selected +
                           "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                           "ERROR:UDHCHPC START FAILED\nIPERF not set in conf. file!!\n"
                           "DISABLE_NETWORK 0 \nCall to DISABLE_NETWORK is successful...\n" +
                           closed + regular_end);
    EXPECT_THAT(run.err, EndsWith("Fail to run dhclient!!!\nFail to start udhcpc!!!\n"));
    EXPECT_EQ(run.result_file(), all_passed);
}

TEST(LegacyWlanRun, goes_on_without_a_dhcp_client) {
    const BenchRun run = run_wlan(Bench().line("program udhcpc missing"));
    EXPECT_THAT(run.err, EndsWith("Fail to run dhclient!!!\nFail to start udhcpc!!!\n"));
    EXPECT_EQ(run.result_file(), all_passed);
}

TEST(LegacyWlanRun, rests_for_the_interval_only_after_a_pass) {
    const auto wall = [](const char* scenario, const char* interval) {
        return Bench(scenario)
            .line(quick_address)
            .args({"-w", "-m", "1", "-i", interval})
            .run()
            .wall_ms;
    };
    EXPECT_GT(wall("", "8"), 10900);
    EXPECT_LT(wall("disable-refused", "8"), 9000);
    EXPECT_LT(wall("", "-8"), 9000);
}

TEST(LegacyWlanRun, counts_only_the_iteration_that_failed) {
    const BenchRun run =
        run_wlan(Bench()
                     .line("supplicant answers \"DISABLE_NETWORK 0 \" 2 with \"FAIL\\n\"")
                     .line(quick_address),
                 3);
    EXPECT_EQ(run.result_file(), one_failure);
    EXPECT_THAT(run.out, HasSubstr("Call to DISABLE_NETWORK is successful...\n" + closed + checks +
                                   unmeasured + "DISABLE_NETWORK 0 \n" + closed + checks));
}

// ---- failures ----------------------------------------------------------------------------------

struct Failure {
    const char* scenario;
    /// Of the iteration, between the checks and the end.
    std::string out;
    std::string err;
    std::string result_file;
};

void PrintTo(const Failure& failure, std::ostream* out) {
    *out << failure.scenario;
}

class FailingRun : public testing::TestWithParam<Failure> {};

TEST_P(FailingRun, shows_its_console_and_writes_its_result) {
    const BenchRun run = run_wlan(Bench(GetParam().scenario).faster(10));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, start + checks + GetParam().out + regular_end);
    EXPECT_EQ(run.err, GetParam().err);
    EXPECT_EQ(run.result_file(), GetParam().result_file);
    EXPECT_THAT(run.sockets(), IsEmpty());
}

std::string refused_setting(const std::string& message) {
    return "SET_NETWORK Command for " + message;
}

const std::string unset = added +
                          "Result of cmd_to_setnetwork function is 19\n"
                          "ERROR:SET_NETWORK COMMAND FAILED\n" +
                          closed;

INSTANTIATE_TEST_SUITE_P(
    Scenarios, FailingRun,
    testing::Values(
        Failure{"supplicant-absent", "[WIFI]Unable to open sockets!!\n", "unable to open sockets\n",
                two_failures},
        Failure{"attach-refused", "[WIFI]Unable to attach event socket!!\n" + closed,
                "unable to open sockets\n", two_failures},
        Failure{"supplicant-never-answers", "[WIFI]Unable to attach event socket!!\n" + closed,
                "unable to open sockets\n", two_failures},
        Failure{"scan-refused", "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n" + closed,
                "Scan Command not successful\n", one_failure},
        Failure{"scan-busy-twice-then-refused",
                "Fail to send Scan Command!!!\nERROR:SCAN-FAIL\n" + closed,
                "Scan Command not successful\n", one_failure},
        Failure{"scan-busy-then-refused",
                "Fail to send Scan Command!!!\nERROR:SCAN FAIL-BUSY\n" + closed,
                "Scan returning FAIL-BUSY", one_failure},
        Failure{"access-point-absent",
                scanned + "bench-apis not found!!!\nFail to send Scan_Results Command!!!\n" +
                    closed,
                "", one_failure},
        Failure{"scan-results-refused",
                scanned + "bench-apis not found!!!\nFail to send Scan_Results Command!!!\n" +
                    closed,
                "scan_results Command not successful\n", one_failure},
        Failure{"add-network-refused", listed + "ERROR:ADD_NETWORK COMMAND FAILED\n" + closed,
                "ADD_NETWORK Command not successful\n", one_failure},
        Failure{"network-id-without-newline",
                listed + "ERROR:ADD_NETWORK COMMAND FAILED\n" + closed,
                "Fail to receive Network Id\n", one_failure},
        Failure{"network-refused-at-ssid", unset, refused_setting("ssid is  not successful\n"),
                one_failure},
        Failure{"network-refused-at-auth-alg", unset,
                refused_setting("auth_alg is not successful\n"), one_failure},
        Failure{"network-refused-at-proto", unset, refused_setting("proto is not successful\n"),
                one_failure},
        Failure{"network-refused-at-key-mgmt", unset,
                refused_setting("key_mgmt is not successful\n"), one_failure},
        Failure{"network-refused-at-pairwise", unset,
                refused_setting("pairwise is not successful\n"), one_failure},
        Failure{"network-refused-at-psk", unset, refused_setting("psk is not successful\n"),
                one_failure},
        Failure{"replies-with-fail-inside", unset, refused_setting("psk is not successful\n"),
                one_failure},
        Failure{"supplicant-dies-between-two-commands", unset,
                refused_setting("ssid is  not successful\n"), one_failure},
        Failure{"select-refused",
                configured +
                    "Fail to send Command SELECT_NETWORK !!!\n"
                    "ERROR:SELECT_NETWORK COMMAND FAILED\n" +
                    closed,
                "SELECT_NETWORK Command is  not successful\n", one_failure},
        Failure{"connection-never-comes",
                configured +
                    "Fail to send Command SELECT_NETWORK !!!\n"
                    "ERROR:SELECT_NETWORK COMMAND FAILED\n" +
                    closed,
                "Unable to Connect Time out!!!\n", one_failure},
        Failure{"endless-event-flood",
                configured +
                    "Fail to send Command SELECT_NETWORK !!!\n"
                    "ERROR:SELECT_NETWORK COMMAND FAILED\n" +
                    closed,
                "Unable to Connect Time out!!!\n", one_failure}),
    [](const auto& failure) {
        std::string name = failure.param.scenario;
        std::replace(name.begin(), name.end(), '-', '_');
        return name;
    });

TEST(LegacyWlanRun, tells_only_that_old_networks_cannot_be_removed) {
    const BenchRun run = run_wlan(Bench("remove-network-refused").line(quick_address));
    EXPECT_EQ(run.err, "REMOVE_NETWORK Command is  not successful\n");
    EXPECT_EQ(run.result_file(), all_passed);
}

TEST(LegacyWlanRun, says_more_of_a_network_that_cannot_be_added_with_debug) {
    const BenchRun run = Bench("add-network-refused").args({"-w", "-u", "-m", "1"}).run();
    EXPECT_THAT(run.out, HasSubstr("Scan_Results Command Sent Successfully...\n"
                                   "Fail to send Command ADD_NETWORK!!!\n\n"
                                   "ERROR:ADD_NETWORK COMMAND FAILED\n" +
                                   closed));
}

void expect_failed_disabling(const char* scenario, const std::string& told) {
    const BenchRun run = run_wlan(Bench(scenario));
    EXPECT_EQ(run.out, start + checks + unmeasured + "DISABLE_NETWORK 0 \n" + closed + regular_end);
    EXPECT_THAT(run.err, EndsWith(told + "Fail to send command DISABLE_NETWORK!!!\n"));
    EXPECT_EQ(run.result_file(), one_failure);
}

TEST(LegacyWlanRun, fails_when_disabling_is_refused) {
    expect_failed_disabling("disable-refused", "DISABLE_NETWORK Command is  not successful\n");
}

TEST(LegacyWlanRun, fails_when_the_disconnection_is_never_told) {
    expect_failed_disabling("disconnect-event-never-comes",
                            "Timeout waiting for CTRL-EVENT-DISCONNECTED event\n");
}

TEST(LegacyWlanRun, asks_a_busy_supplicant_again_at_once) {
    const BenchRun run = run_wlan(Bench("scan-busy-four-times"));
    EXPECT_EQ(run.result_file(), all_passed);
    const auto commands = run.timed_commands();
    ASSERT_GE(commands.size(), 5U);
    EXPECT_EQ(commands[4].second, "SCAN");
    EXPECT_LT(commands[4].first - commands[0].first, 100'000);
}

TEST(LegacyWlanRun, passes_through_a_flood_of_other_events) {
    const BenchRun run = run_wlan(Bench("event-flood"));
    EXPECT_THAT(run.out, HasSubstr(unmeasured));
    EXPECT_EQ(run.result_file(), all_passed);
}

TEST(LegacyWlanRun, takes_30_seconds_to_give_a_connection_up) {
    const BenchRun run = run_wlan(Bench("connection-never-comes"));
    // Whole seconds of the wall clock count, so the first can be a short one.
    EXPECT_GT(run.wall_ms, 31900);
    EXPECT_LT(run.wall_ms, 35000);
}

} // namespace
} // namespace bench_test

// SPDX-License-Identifier: Apache-2.0
// From a console to the model of its runs.

#include "consoles.hpp"
#include "model/verdict.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using namespace report_test;
using namespace wivex::report;
using testing::Contains;
using testing::SizeIs;

std::uint32_t failures(const wivex::report::Run& run, int test_case) {
    return run.failures_of_test_case(test_case);
}

// ---- Iterations and phases

TEST(RunReader, splits_a_run_into_iterations_that_count_from_0) {
    const auto run = read_run(banner + legacy_pass + legacy_pass + legacy_pass + end);
    EXPECT_EQ(run.started, 3U);
    EXPECT_EQ(run.count(Outcome::passed), 3U);
    ASSERT_THAT(run.iterations, SizeIs(3));
    EXPECT_EQ(run.iterations[2].number, 2U);
    EXPECT_EQ(run.end, RunEnd::finished);
    EXPECT_TRUE(run.result_written);
    EXPECT_TRUE(judge(run).is_green());
}

TEST(RunReader, names_the_phases_of_the_legacy_mode) {
    const auto run = read_run(banner + legacy_pass + end);
    EXPECT_EQ(run.mode, Mode::legacy);
    const Iteration& iteration = run.iterations.at(0);
    for (const Phase phase : {Phase::module, Phase::driver, Phase::scan, Phase::associate,
                              Phase::dhcp, Phase::traffic, Phase::disconnect}) {
        EXPECT_EQ(iteration.phase(phase).verdict, Verdict::passed) << name_of(phase);
    }
    for (const Phase phase : {Phase::mac, Phase::loopback, Phase::find, Phase::removal}) {
        EXPECT_EQ(iteration.phase(phase).verdict, Verdict::none) << name_of(phase);
    }
}

TEST(RunReader, reads_the_ids_of_the_device) {
    const auto run = read_run(banner + legacy_pass + end);
    EXPECT_EQ(run.device.build, "WIVEX2_0_160421_INCREASE_SCAN_RESULT_SIZE");
    EXPECT_EQ(run.device.config_file, "/lib/modules/wifi/wivex.cfg");
    EXPECT_EQ(run.device.chip_type, 2);
    EXPECT_EQ(run.device.vendor_id, "0cf3");
    EXPECT_EQ(run.device.product_id, "9378");
    EXPECT_EQ(run.device.address, "192.168.49.40");
    EXPECT_EQ(run.result_file, "/root/WIFIResult");
}

TEST(RunReader, takes_the_total_of_iperf_as_the_throughput) {
    const auto run = read_run(banner + legacy_pass + end);
    EXPECT_FLOAT_EQ(run.iterations.at(0).throughput, 94.0F);
}

TEST(RunReader, takes_the_mean_of_the_intervals_when_iperf_was_cut_off) {
    const auto run = read_run(banner + checks_pass + scan_and_associate + take_address +
                              "[  3]  0.0- 1.0 sec  11.0 MBytes  90.0 Mbits/sec\n"
                              "[  3]  1.0- 2.0 sec  11.4 MBytes  96.0 Mbits/sec\n" +
                              disconnect + session_closes + end);
    EXPECT_FLOAT_EQ(run.iterations.at(0).throughput, 93.0F);
}

TEST(RunReader, warns_of_traffic_without_a_figure) {
    const auto run = read_run(banner + checks_pass + scan_and_associate + take_address +
                              "connect failed: Connection refused\nRun Iperf Successful...\n" +
                              disconnect + session_closes + end);
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    EXPECT_EQ(run.warned, 1U);
    EXPECT_EQ(run.causes.at(index_of(Cause::no_traffic_figure)).warnings, 1U);
}

// ---- Failures and their counts

TEST(RunReader, counts_the_checks_of_an_iteration) {
    const auto run =
        read_run(banner +
                 "\n[WIFI]ERROR:Module not inserted. check Insmod [*].ko\n"
                 "[WIFI]check usbfs: mount -t usbfs none /proc/bus/usb \n"
                 "[WIFI]ERROR:WiFi network interface not up(check supplicant)\n"
                 "[WIFI]Result file direcotry is /root/\n[WIFI]MAC PRINT FAIL\n"
                 "[WIFI]LOOPBACK is not supported for this chip\n[WIFI]### LOOPBACK FAIL ###\n" +
                 end);
    for (const int test_case : {1, 2, 3, 4}) {
        EXPECT_EQ(failures(run, test_case), 1U) << test_case;
    }
    EXPECT_EQ(run.mode, Mode::checks);
    EXPECT_EQ(run.count(Outcome::failed), 1U);
}

TEST(RunReader, counts_an_unreachable_supplicant_twice_in_the_legacy_mode) {
    const std::string failing = checks_pass + "[WIFI]Unable to open sockets!!\n"
                                              "unable to open sockets\n";
    const auto run = read_run(banner + failing + legacy_pass + end);
    EXPECT_EQ(failures(run, 8), 2U);
    EXPECT_EQ(run.count(Outcome::failed), 1U);
}

TEST(RunReader, cannot_tell_the_mode_of_a_run_that_never_reached_the_supplicant) {
    const std::string console =
        banner + checks_pass + "[WIFI]Unable to open sockets!!\nunable to open sockets\n" + end;
    EXPECT_EQ(read_run(console).mode, Mode::unknown);
    EXPECT_EQ(read_run(console).failures_without_test_case(), 1U);
    EXPECT_EQ(failures(read_run(console, {Mode::legacy, false}), 8), 2U);
    EXPECT_EQ(failures(read_run(console, {Mode::client, false}), 9), 1U);
}

TEST(RunReader, records_a_refused_scan_under_21) {
    const auto run = read_run(banner + checks_pass +
                              "Scan Command not successful\nFail to send Scan Command!!!\n"
                              "ERROR:SCAN-FAIL\n" +
                              session_closes + end);
    EXPECT_EQ(failures(run, 8), 1U);
    EXPECT_EQ(row_of(run.failures.at(0).cause).code, 21);
}

TEST(RunReader, lets_the_legacy_mode_go_on_without_an_address) {
    const auto run = read_run(banner + checks_pass + scan_and_associate +
                              "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                              "Fail to run dhclient!!!\nFail to start udhcpc!!!\n"
                              "ERROR:UDHCHPC START FAILED\nIPERF not set in conf. file!!\n" +
                              disconnect + session_closes + end);
    EXPECT_EQ(failures(run, 8), 0U);
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    EXPECT_EQ(run.warned, 1U);
    EXPECT_EQ(run.iterations.at(0).phase(Phase::dhcp).verdict, Verdict::warned);
}

TEST(RunReader, fails_the_client_mode_without_an_address) {
    const auto run = read_run(banner + client_until_connected +
                              "Executing dhclient...\nudhcpc -i wlan0 --now.\n"
                              "Fail to run dhclient!!!\nFail to start udhcpc!!!\n" +
                              session_closes + end);
    EXPECT_EQ(run.mode, Mode::client);
    EXPECT_EQ(failures(run, 9), 1U);
    EXPECT_EQ(run.failures.at(0).cause, Cause::dhcp_client);
}

TEST(RunReader, passes_the_client_mode_when_the_group_is_gone) {
    const auto run = read_run(banner + client_until_connected + take_address +
                              "IPERF not set in conf. file!!\n"
                              "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n"
                              "Waiting for P2P-GROUP-REMOVED event from peer.\n" +
                              session_closes + end);
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    for (const Phase phase : {Phase::find, Phase::negotiate, Phase::dhcp, Phase::removal}) {
        EXPECT_EQ(run.iterations.at(0).phase(phase).verdict, Verdict::passed) << name_of(phase);
    }
}

TEST(RunReader, follows_the_device_mode_as_owner_and_as_client) {
    const auto run = read_run(
        banner + device_until_role +
        "[WIFI]Testing for GO\nMATCH FOUND!!!GO\nGO\n"
        "ifconfig wlan0 192.168.49.2\n"
        "killall udhcpd;sleep 1; udhcpd /tmp/udhcpd.conf\n"
        "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n" +
        session_closes + device_until_role + "MATCH FOUND!!!client\nclient\n" + take_address +
        "Waiting for P2P-GROUP-REMOVED event from peer.\n" + session_closes + end);
    EXPECT_EQ(run.mode, Mode::device);
    EXPECT_EQ(run.count(Outcome::passed), 2U);
    EXPECT_EQ(run.iterations.at(0).phase(Phase::group).verdict, Verdict::passed);
    EXPECT_EQ(run.iterations.at(1).phase(Phase::dhcp).verdict, Verdict::passed);
}

TEST(RunReader, leaves_out_what_the_own_group_mode_does_not_count) {
    const auto run = read_run(banner + checks_pass +
                              "Sent P2P_GROUP_REMOVE wlan0command to wpa_supplicant:\n"
                              "unable to start p2p group bench-ap \n" +
                              session_closes + end);
    EXPECT_EQ(run.mode, Mode::go);
    EXPECT_EQ(failures(run, 7), 0U);
    EXPECT_EQ(run.count(Outcome::uncounted), 1U);
    EXPECT_FALSE(judge(run).is_green());
}

TEST(RunReader, takes_an_interrupted_own_group_for_served) {
    const auto run = read_run(banner + checks_pass +
                              "P2P group started bench-ap \n"
                              "Client connected 1.\nClient connected 2.\n" +
                              interrupt);
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    EXPECT_EQ(run.clients_served, 2U);
    EXPECT_EQ(run.end, RunEnd::interrupted);
}

TEST(RunReader, shows_the_lines_around_a_failure) {
    const auto run = read_run(banner + checks_pass +
                              "Scan Command Sent Successfully...\n"
                              "line-apis not found!!!\n"
                              "Fail to send Scan_Results Command!!!\n" +
                              session_closes + end);
    const Failure& failure = run.failures.at(0);
    EXPECT_EQ(failure.lines.at(failure.shown_at), "Fail to send Scan_Results Command!!!");
    EXPECT_THAT(failure.lines, Contains("line-apis not found!!!"));
    EXPECT_EQ(failure.lines.back(), "[WIFI]Here at 217 wpa_ctrl_close...");
}

// ---- What is not counted yet

TEST(RunReader, does_not_count_a_failure_that_an_interrupt_kept_from_being_recorded) {
    const std::string failing =
        banner + checks_pass +
        "SET_NETWORK Command for psk is not successful\n"
        "Result of cmd_to_setnetwork function is 19\nERROR:SET_NETWORK COMMAND FAILED\n"
        "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...\n";
    EXPECT_EQ(failures(read_run(failing + interrupt), 8), 0U);
    EXPECT_TRUE(read_run(failing + interrupt).failures.at(0).unrecorded);
    const std::string second = "[WIFI]Here at 217 wpa_ctrl_close...\nValue of sigterm_var is 0 ...";
    EXPECT_EQ(failures(read_run(failing + second + "\n" + interrupt), 8), 1U);
}

TEST(RunReader, concludes_a_failure_told_on_a_standard_error_that_is_missing) {
    const auto run = read_run(banner + legacy_pass + checks_pass + scan_and_associate +
                              take_address + "DISABLE_NETWORK 0 \n" + session_closes + end);
    EXPECT_EQ(failures(run, 8), 0U) << "standard error is there: \"Run Iperf Successful...\"";
    const auto silent =
        read_run(banner + checks_pass + scan_and_associate + take_address +
                 "IPERF not set in conf. file!!\nDISABLE_NETWORK 0 \n" + session_closes + end);
    EXPECT_EQ(failures(silent, 8), 1U);
    EXPECT_EQ(silent.failures.at(0).cause, Cause::network_not_disabled);
    EXPECT_TRUE(silent.failures.at(0).concluded);
}

TEST(RunReader, takes_a_cut_off_console_for_unfinished) {
    const auto run =
        read_run(banner + legacy_pass + checks_pass + scan_and_associate + "Executing");
    EXPECT_EQ(run.count(Outcome::passed), 1U);
    EXPECT_EQ(run.count(Outcome::unfinished), 1U);
    EXPECT_EQ(run.end, RunEnd::open);
    EXPECT_FALSE(judge(run).is_green());
}

// ---- MAC texts, softAP, starts and ends

TEST(RunReader, reads_mac_texts) {
    const auto run = read_run(banner + checks_pass +
                              "[WIFI]MAC from kernel ioctl :- 02:00:00:00:0A:01\n"
                              "[WIFI]fw_mac_addr is 02:00:00:00:0a:01 and its length is 17\n"
                              "[WIFI] prev_mac [02:00:00:00:0A:01] curr_mac [02:00:00:00:0a:01]\n"
                              "[WIFI]MAC PRINT SUCCESS\n" +
                              end);
    EXPECT_EQ(run.device.mac_kernel, "02:00:00:00:0A:01");
    EXPECT_EQ(run.device.mac_chip, "02:00:00:00:0a:01");
    EXPECT_EQ(run.iterations.at(0).phase(Phase::mac).verdict, Verdict::passed);
}

TEST(RunReader, knows_the_end_of_the_softap_mode) {
    const auto run = read_run(banner + checks_pass + "[WIFI]ERROR:create softAP problem\n");
    EXPECT_EQ(run.mode, Mode::softap);
    EXPECT_EQ(run.end, RunEnd::softap);
}

TEST(RunReader, knows_a_run_that_did_not_start) {
    EXPECT_EQ(read_run(banner + "[WIFI]Configuration file problem.Plese check /root/WIFIResult for "
                                "more details\n")
                  .end,
              RunEnd::not_started);
    EXPECT_EQ(read_run(banner + "\n\nUsage: wivex  -m <count> \n").end, RunEnd::not_started);
}

TEST(RunReader, knows_a_killed_run) {
    const auto run = read_run(banner + checks_pass +
                              "[WIFI] Got Kill signal...\n"
                              "[WIFI]Calling for chip --> 3\n"
                              "[WIFI]Cleanup\n");
    EXPECT_EQ(run.end, RunEnd::killed);
    EXPECT_FALSE(run.result_written);
}

TEST(RunReader, knows_a_result_file_that_could_not_be_written) {
    const auto run = read_run(banner + legacy_pass +
                              "[WIFI]user file name is /tmp/x/res\n"
                              "[WIFI]Unable to open Result File: /tmp/x/res\n"
                              "[WIFI]Cleanup\n");
    EXPECT_EQ(run.end, RunEnd::finished);
    EXPECT_FALSE(run.result_written);
    EXPECT_EQ(run.result_file, "/tmp/x/res");
}

TEST(RunReader, tells_the_runs_of_one_console_apart) {
    const Log log = read(banner + legacy_pass + banner + legacy_pass + end);
    ASSERT_THAT(log.runs, SizeIs(2));
    EXPECT_EQ(log.runs[0].end, RunEnd::broke_off);
    EXPECT_EQ(log.runs[1].end, RunEnd::finished);
}

TEST(RunReader, keeps_only_the_last_runs) {
    std::string console;
    for (int i = 0; i < 20; ++i) {
        console += banner + legacy_pass + end;
    }
    const Log log = read(console);
    EXPECT_THAT(log.runs, SizeIs(most_runs));
    EXPECT_EQ(log.dropped_runs, 12U);
}

} // namespace

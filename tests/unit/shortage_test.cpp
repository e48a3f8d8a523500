// SPDX-License-Identifier: Apache-2.0
// What runs out in the middle of a run: descriptors, processes, and what each operation makes of
// it.

#include "children.hpp"
#include "common/shell.hpp"
#include "console_capture.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "diag/diag_device.hpp"
#include "diag/nl80211_scan.hpp"
#include "modes/traffic.hpp"
#include "scratch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

/// Runs `body` in a process that can open nothing besides the three standard streams.
int without_descriptors(const std::function<int()>& body) {
    const int child = fork_child([&body] {
        const rlimit none{3, 3};
        ::setrlimit(RLIMIT_NOFILE, &none);
        return body();
    });
    return end_of_child(child, milliseconds(5000));
}

TEST(WithoutDescriptors, no_connection_is_opened) {
    EXPECT_EQ(without_descriptors([] { return wpa_ctrl_open("/tmp/wlan0") == nullptr ? 1 : 0; }),
              1);
}

TEST(WithoutDescriptors, no_connection_is_cleaned_up) {
    EXPECT_EQ(without_descriptors([] {
                  wpa_ctrl_cleanup();
                  return 1;
              }),
              1);
}

TEST(WithoutDescriptors, the_output_of_a_command_cannot_be_read) {
    EXPECT_EQ(without_descriptors([] { return read_from_shell("echo", 10).has_value() ? 0 : 1; }),
              1);
}

TEST(WithoutDescriptors, the_address_of_the_combo_chip_cannot_be_read) {
    ConsoleCapture console;
    EXPECT_EQ(without_descriptors([] {
                  std::string mac;
                  return firmware_mac_address_qca_combo(mac) == 0 && mac.empty() ? 1 : 0;
              }),
              1);
    EXPECT_EQ(console.out(), "[WIFI]echo /proc/cld/athdiagpfs failed\n");
}

TEST(WithoutDescriptors, a_scan_fails_when_its_request_cannot_be_sent) {
    ConsoleCapture console;
    EXPECT_EQ(without_descriptors([] { return execute_scan_nl_command() == -2 ? 1 : 0; }), 1);
    EXPECT_THAT(console.out(), HasSubstr("[WIFI]nl_send_auto_complete failed from do_scan_trigger\n"
                                         "[WIFI]Waiting for scan to complete...\n"
                                         "[WIFI]ERROR: nl_recvmsgs() returned -"));
}

TEST(WithoutProcesses, the_output_of_a_command_cannot_be_read) {
    EXPECT_EQ(without_processes([] { return read_from_shell("echo", 10).has_value() ? 0 : 1; }), 1);
}

TEST(WithoutProcesses, no_traffic_is_measured) {
    ConsoleCapture console;
    RunConfig config;
    config.check_iperf = "yes";
    EXPECT_EQ(without_processes([&config] { return measure_traffic(config); }), 14);
    EXPECT_EQ(console.err(), "Unable to run Iperf in Client mode!!!\n");
}

} // namespace
} // namespace wivex

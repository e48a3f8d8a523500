// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"
#include "host_programs.hpp"
#include "ops/host_tools.hpp"
#include "process_fixture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <thread>

namespace wivex {
namespace {

using namespace test_support;
using namespace testing;

/// The shell finds nothing but tools that note how they were called.
class HostTools : public ProcessFixture {
protected:
    HostTools() {
        config_.interface_name = "wlan0";
        config_.p2p_iface_ip = "192.168.49.1";
        config_.dhcpd_conf = "/etc/udhcpd.conf";
    }

    HostPrograms programs_;
};

// ---- DHCP server -------------------------------------------------------------------------------

TEST_F(HostTools, restart_the_dhcp_server_with_its_configuration) {
    programs_.provide("killall", "exit 1");
    programs_.provide("sleep");
    programs_.provide("udhcpd");
    EXPECT_TRUE(cmd_to_restart_dhcpd(config_));
    EXPECT_EQ(programs_.calls(), "killall udhcpd\nsleep 1\nudhcpd /etc/udhcpd.conf\n");
    EXPECT_THAT(console_.streams(), Pair("killall udhcpd;sleep 1; udhcpd /etc/udhcpd.conf\n", ""));
}

TEST_F(HostTools, put_the_path_in_front_of_the_dhcp_server_as_it_is) {
    programs_.provide("killall");
    programs_.provide("sleep");
    programs_.provide("x-udhcpd");
    config_.dhcpd_path = programs_.path_of("x-");
    EXPECT_TRUE(cmd_to_restart_dhcpd(config_));
    EXPECT_EQ(programs_.calls(), "killall udhcpd\nsleep 1\nx-udhcpd /etc/udhcpd.conf\n");
    EXPECT_EQ(console_.out(),
              "killall udhcpd;sleep 1; " + programs_.path_of("x-") + "udhcpd /etc/udhcpd.conf\n");
}

// ---- address -----------------------------------------------------------------------------------

TEST_F(HostTools, give_the_interface_its_address) {
    programs_.provide("ifconfig", "exit 3");
    EXPECT_TRUE(cmd_to_set_ip(config_));
    EXPECT_EQ(programs_.calls(), "ifconfig wlan0 192.168.49.1\n");
    EXPECT_THAT(console_.streams(), Pair("ifconfig wlan0 192.168.49.1\n", ""));
}

TEST_F(HostTools, print_a_command_before_it_runs) {
    programs_.provide("ifconfig", "echo output of the tool");
    EXPECT_TRUE(cmd_to_set_ip(config_));
    EXPECT_EQ(console_.out(), "ifconfig wlan0 192.168.49.1\noutput of the tool\n");
}

TEST_F(HostTools, count_a_command_that_the_shell_cannot_find_as_a_success) {
    EXPECT_TRUE(cmd_to_set_ip(config_));
    EXPECT_TRUE(cmd_to_restart_dhcpd(config_));
    EXPECT_TRUE(cmd_to_start_iperf_server(config_));
    EXPECT_TRUE(cmd_to_run_iperf_client(config_));
}

// ---- iperf -------------------------------------------------------------------------------------

TEST_F(HostTools, end_every_iperf_twice_before_the_server_starts) {
    programs_.provide("killall", "exit 1");
    programs_.provide("iperf");
    EXPECT_TRUE(cmd_to_start_iperf_server(config_));
    const Stopwatch watch;
    while (programs_.calls() != "killall iperf\nkillall iperf\niperf -s -i 1\n" &&
           watch.elapsed() < milliseconds(3000)) {
        std::this_thread::sleep_for(milliseconds(5));
    }
    EXPECT_EQ(programs_.calls(), "killall iperf\nkillall iperf\niperf -s -i 1\n");
    EXPECT_THAT(console_.streams(), Pair("", ""));
}

TEST_F(HostTools, leave_the_iperf_server_in_the_background) {
    programs_.provide("killall");
    programs_.provide("iperf", "exec /bin/sleep 2");
    const Stopwatch watch;
    EXPECT_TRUE(cmd_to_start_iperf_server(config_));
    EXPECT_LT(watch.elapsed(), milliseconds(1900));
}

TEST_F(HostTools, run_the_iperf_client_to_its_end) {
    programs_.provide("iperf", "/bin/sleep 0.5; echo measured; exit 1");
    const Stopwatch watch;
    EXPECT_TRUE(cmd_to_run_iperf_client(config_));
    EXPECT_GE(watch.elapsed(), milliseconds(500));
    EXPECT_EQ(programs_.calls(), "iperf -c 192.168.49.1 -i 1\n");
    EXPECT_THAT(console_.streams(), Pair("measured\n", ""));
}

TEST_F(HostTools, put_the_path_in_front_of_iperf_as_it_is) {
    programs_.provide("killall");
    programs_.provide("x-iperf");
    config_.iperf_path = programs_.path_of("x-");
    EXPECT_TRUE(cmd_to_run_iperf_client(config_));
    EXPECT_EQ(programs_.calls(), "x-iperf -c 192.168.49.1 -i 1\n");
}

// ---- DHCP client -------------------------------------------------------------------------------

TEST_F(HostTools, take_an_address_and_end_the_client_that_stays) {
    programs_.provide("udhcpc");
    programs_.provide("killall");
    EXPECT_EQ(cmd_to_run_dhcp_client("wlan7"), 0);
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan7 --now\nkillall udhcpc\n");
    EXPECT_THAT(console_.streams(), Pair("Executing dhclient...\nudhcpc -i wlan7 --now.\n", ""));
}

TEST_F(HostTools, end_the_dhcp_client_again_and_again_until_one_was_found) {
    programs_.provide("udhcpc");
    directory_.file("tries", "0\n");
    programs_.provide("killall", "read tries <" + (directory_ / "tries") +
                                     "; tries=$((tries+1)); echo $tries >" +
                                     (directory_ / "tries") + "; [ $tries -ge 5 ]");
    const Stopwatch watch;
    EXPECT_EQ(cmd_to_run_dhcp_client("wlan0"), 0);
    EXPECT_LT(watch.elapsed(), milliseconds(1900));
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan0 --now\nkillall udhcpc\nkillall udhcpc\nkillall "
                                 "udhcpc\nkillall udhcpc\nkillall udhcpc\n");
}

TEST_F(HostTools, fail_with_21_when_no_address_can_be_had) {
    programs_.provide("udhcpc", "exit 1");
    programs_.provide("killall");
    EXPECT_EQ(cmd_to_run_dhcp_client("wlan0"), 21);
    EXPECT_EQ(programs_.calls(), "udhcpc -i wlan0 --now\n");
    EXPECT_THAT(console_.streams(), Pair("Executing dhclient...\nudhcpc -i wlan0 --now.\n",
                                         "Fail to run dhclient!!!\n"));
}

TEST_F(HostTools, fail_with_21_when_there_is_no_dhcp_client_or_it_is_killed) {
    EXPECT_EQ(cmd_to_run_dhcp_client("wlan0"), 21);
    programs_.provide("udhcpc", "kill -9 $$");
    EXPECT_EQ(cmd_to_run_dhcp_client("wlan0"), 21);
}

// ---- no shell ----------------------------------------------------------------------------------

TEST_F(HostTools, fail_only_when_no_child_can_be_started) {
    EXPECT_EQ(without_processes([this] {
                  int failures = 0;
                  failures += cmd_to_restart_dhcpd(config_) ? 0 : 1;
                  failures += cmd_to_set_ip(config_) ? 0 : 2;
                  failures += cmd_to_start_iperf_server(config_) ? 0 : 4;
                  failures += cmd_to_run_iperf_client(config_) ? 0 : 8;
                  failures += cmd_to_run_dhcp_client("wlan0") == 21 ? 16 : 0;
                  return failures;
              }),
              31);
}

} // namespace
} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
#include "ops/host_tools.hpp"

#include "common/console.hpp"
#include "common/shell.hpp"

namespace wivex {

namespace {

constexpr int shell_not_started = -1;

bool print_and_run(const std::string& command) {
    print_out("%s\n", command.c_str());
    return run_shell(command) != shell_not_started;
}

} // namespace

bool cmd_to_restart_dhcpd(const RunConfig& config) {
    return print_and_run("killall udhcpd;sleep 1; " + config.dhcpd_path + "udhcpd " +
                         config.dhcpd_conf);
}

bool cmd_to_set_ip(const RunConfig& config) {
    return print_and_run("ifconfig " + config.interface_name + " " + config.p2p_iface_ip);
}

bool cmd_to_start_iperf_server(const RunConfig& config) {
    run_shell("killall iperf;killall iperf");
    return run_shell(config.iperf_path + "iperf -s -i 1 &") != shell_not_started;
}

bool cmd_to_run_iperf_client(const RunConfig& config) {
    return run_shell(config.iperf_path + "iperf -c " + config.p2p_iface_ip + " -i 1") !=
           shell_not_started;
}

ErrorCode cmd_to_run_dhcp_client(const std::string& interface) {
    print_out("Executing dhclient...\n");
    const std::string command = "udhcpc -i " + interface + " --now";
    print_out("%s.\n", command.c_str());
    if (run_shell(command) != 0) {
        print_err("Fail to run dhclient!!!\n");
        return error_code::dhcp_client_failed;
    }
    while (run_shell("killall udhcpc") != 0) {
    }
    return error_code::passed;
}

} // namespace wivex

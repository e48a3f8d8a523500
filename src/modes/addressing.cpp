// SPDX-License-Identifier: Apache-2.0
#include "modes/addressing.hpp"

#include "common/console.hpp"
#include "ops/host_tools.hpp"

namespace wivex {

ErrorCode take_address(const RunConfig& config) {
    const ErrorCode result = cmd_to_run_dhcp_client(config.interface_name);
    if (result != error_code::passed) {
        print_err("Fail to start udhcpc!!!\n");
        return result;
    }
    print_out("Command to udhcpc is successful...\n");
    return error_code::passed;
}

ErrorCode serve_addresses(const RunConfig& config) {
    if (!cmd_to_set_ip(config)) {
        print_err("Unable to assign ip to %s \n", config.interface_name.c_str());
        return error_code::group_addressing_failed;
    }
    if (!cmd_to_restart_dhcpd(config)) {
        print_err("Unable to start dhcpd\n");
        return error_code::group_addressing_failed;
    }
    return error_code::passed;
}

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Steps that are handed to the device's shell: addresses, DHCP and iperf.
//
// Command lines are plain concatenations of fixed texts and configuration values. Except for the
// DHCP client a step has succeeded when the shell could be started; what the tool itself said is
// not looked at.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"

#include <string>

namespace wivex {

/// Restarts the DHCP server. The command is printed. Returns false when there is no shell.
bool cmd_to_restart_dhcpd(const RunConfig& config);

/// Gives the interface its static address. The command is printed.
bool cmd_to_set_ip(const RunConfig& config);

/// Ends every running iperf and starts a server that goes on in the background.
bool cmd_to_start_iperf_server(const RunConfig& config);

/// Runs an iperf client to its end.
bool cmd_to_run_iperf_client(const RunConfig& config);

/// Takes an address by DHCP on `interface` and then ends the client that stays in the background;
/// this is repeated until such a client was found, however long that takes. Returns 0 or 21.
ErrorCode cmd_to_run_dhcp_client(const std::string& interface);

} // namespace wivex

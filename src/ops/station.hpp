// SPDX-License-Identifier: Apache-2.0
// Station operations: each is one step of an association, sent to the supplicant as text commands.
//
// Every operation needs an open session; without one it says so and returns
// `error_code::session_not_open`. Messages go to standard error unless stated otherwise.
#pragma once

#include "common/error_code.hpp"
#include "common/run_config.hpp"
#include "ctrl/supplicant_session.hpp"

#include <string>

namespace wivex {

/// Scans and waits for the results, without a limit; a busy supplicant is asked again at once.
/// Returns 0, 6, 8 (refused) or 24 (refused after more than two busy replies).
ErrorCode cmd_to_scan(SupplicantSession& session);

/// Appends the scan listing to `listing`: the whole reply buffer, zero bytes behind the text
/// included. Returns false when there is none.
bool cmd_to_scan_results(SupplicantSession& session, std::string& listing);

/// Looks for `go_ssid` in the scan listing and takes the security of the last line that holds it
/// into `config`. Verdict on standard output. Returns 0 when found, else 1.
int cmd_to_find_network(SupplicantSession& session, RunConfig& config);

/// Replaces all networks by a new one. Returns its id (0 in practice), 6, 18 or 23.
int cmd_to_addnetwork(SupplicantSession& session);

/// Configures network `id` for the access point found. Returns 0, 6 or 19.
ErrorCode cmd_to_setnetwork(SupplicantSession& session, const RunConfig& config, int id);

/// Selects network `id` and waits up to 30 seconds for the connection. Returns 0, 6 or 20.
ErrorCode cmd_to_selectnetwork(SupplicantSession& session, int id);

/// Disables network `id` and waits up to 30 seconds for the disconnection. The command is printed
/// to standard output. Returns 0, 1 (no disconnection), 6, 20 or 22.
ErrorCode cmd_to_disablenetwork(SupplicantSession& session, int id);

} // namespace wivex

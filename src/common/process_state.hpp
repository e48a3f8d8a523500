// SPDX-License-Identifier: Apache-2.0
// The state of the process that several rooms share.
//
// The termination handler must reach the results, the options and the supplicant connections
// wherever the run stands, so they are process-wide by design. What one file alone needs for the
// whole process (the text on its way to the console, the held signals, the kept status probes, the
// table of scans) is private to that file.
#pragma once

#include "common/run_options.hpp"

#include <csignal>
#include <cstdint>

namespace wivex {

struct wpa_ctrl;

extern RunOptions run_options;

/// Whether the scan mode reads the access points of the previous run (-o iw) or not.
extern std::int32_t compare_previous;

// The two checks that begin every iteration can be switched off at build time.
inline constexpr std::int32_t module_check_enabled = 1;
inline constexpr std::int32_t driver_check_enabled = 1;

/// 1 while the clean-up closes the supplicant connections, else 0.
extern volatile std::sig_atomic_t sigterm_var;

/// Numbers the client sockets of this process; only ever counts up.
extern std::int32_t client_counter;

// The connections of the one live supplicant session; null when not open.
extern wpa_ctrl* command_connection;
extern wpa_ctrl* event_connection;

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// Scan mode (-S): scans through nl80211, selects access points by the beginning of their SSID, and
// follows them from run to run in the status file.
#pragma once

namespace wivex {

/// Runs one iteration; `prefix` may be null. Returns 0, -1 (the status file of
/// the previous run is there, but cannot be read; it stays as it is), -2 (the scan failed), -3
/// (nothing was heard) or -4 (no SSID begins with `prefix`).
int scan_wifi_test(const char* prefix);

/// Returns -3 when the scan's listing is there and empty, else 0.
int check_scan_output();

} // namespace wivex

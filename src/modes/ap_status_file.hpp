// SPDX-License-Identifier: Apache-2.0
// The access-point status file: one access point a line, "BSSID/signal/status/SSID", or a marker
// line when a run ended without any.
#pragma once

#include "common/files.hpp"
#include "diag/access_points.hpp"

#include <string>

namespace wivex {

inline constexpr std::size_t status_table_capacity = 50;

using StatusTable = AccessPointList<status_table_capacity>;

struct StatusFileRead {
    bool opened = false;
    /// Why the file could not be opened, or not be read to its end; else 0.
    int error = 0;
};

/// Reads the access points of an earlier run, each with the signal "0" and status 1 (not seen yet).
/// A line that is malformed is told on standard output and counts all the same; what does not fit
/// is left out.
StatusFileRead read_status_file(const std::string& path, Links links, StatusTable& known);

/// Writes the known access points, or the marker of `result` (-2, -3 or -4) when there are none.
/// Returns 0, or the error number of a file that cannot be opened or takes no more.
int write_status_file(const std::string& path, Links links, const StatusTable& known, int result);

} // namespace wivex

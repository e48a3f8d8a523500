// SPDX-License-Identifier: Apache-2.0
// The listing of a scan: three lines for each BSS. Nothing here allocates, since it runs while the
// netlink library hands out its messages.
#pragma once

#include "common/files.hpp"
#include "diag/access_points.hpp"
#include "diag/nl80211.hpp"

namespace wivex {

/// Writes the SSID line and keeps the text in `access_point`.
void print_ssid(FileWriter& listing, Bytes elements, AccessPoint& access_point);

/// Writes the three lines of a BSS. Returns its entry for the table.
AccessPoint list_bss(FileWriter& listing, const BssEntry& bss);

} // namespace wivex

// The listing of a scan: three lines for each BSS. Nothing here allocates, since it runs while the
// netlink library hands out its messages.
#pragma once

#include "diag/access_points.hpp"
#include "diag/nl80211.hpp"

#include <cstdio>

namespace wivex {

/// Writes the SSID line and keeps the text in `access_point`.
void print_ssid(std::FILE* listing, Bytes elements, AccessPoint& access_point);

/// Writes the three lines of a BSS. Returns its entry for the table.
AccessPoint list_bss(std::FILE* listing, const BssEntry& bss);

} // namespace wivex

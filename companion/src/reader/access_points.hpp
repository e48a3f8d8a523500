// SPDX-License-Identifier: Apache-2.0
// The access points that a run has seen.
#pragma once

#include "model/run.hpp"

#include <optional>
#include <string_view>

namespace wivex::report {

/// What a console tells of an access point; no `bssid` and no `frequency` where only names stand.
struct Sighting {
    std::string_view ssid;
    std::string_view bssid;
    int frequency = 0;
    std::optional<float> signal;
};

void see_access_point(Run& run, const Sighting& seen);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "reader/access_points.hpp"

#include "common/printable.hpp"

#include <algorithm>

namespace wivex::report {

void see_access_point(Run& run, const Sighting& seen) {
    auto& list = run.access_points;
    const std::string name = printable(seen.ssid, 140);
    const auto found = std::ranges::find_if(list, [&](const AccessPoint& point) {
        return point.bssid == seen.bssid && (point.ssid == name || !seen.bssid.empty());
    });
    AccessPoint* point = found == list.end() ? nullptr : &*found;
    if (point == nullptr) {
        if (list.size() == most_access_points) {
            ++run.unlisted_access_points;
            return;
        }
        point = &list.emplace_back();
        point->bssid = std::string(seen.bssid);
    }
    point->ssid = name;
    point->frequency = seen.frequency;
    ++point->times_seen;
    if (seen.signal) {
        point->signal.add(*seen.signal);
    }
}

} // namespace wivex::report

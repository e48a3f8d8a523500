// SPDX-License-Identifier: Apache-2.0
#include "reader/heard.hpp"

#include <algorithm>
#include <limits>

namespace wivex::report {

void HeardAccessPoints::hear(std::string_view bssid, std::string_view ssid, float signal) {
    const auto known = std::ranges::find(heard_, bssid, &Heard::bssid);
    if (known != heard_.end()) {
        known->ssid = ssid;
        known->signal = signal;
    } else if (heard_.size() < most) {
        heard_.push_back({std::string(bssid), std::string(ssid), signal});
    }
}

float HeardAccessPoints::signal() const {
    constexpr float unknown = std::numeric_limits<float>::quiet_NaN();
    const auto& name = connected_.empty() ? ssid_ : connected_;
    const auto of = connected_.empty() ? &Heard::ssid : &Heard::bssid;
    if (name.empty() || std::ranges::count(heard_, name, of) != 1) {
        return unknown;
    }
    return std::ranges::find(heard_, name, of)->signal;
}

} // namespace wivex::report

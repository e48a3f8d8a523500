// SPDX-License-Identifier: Apache-2.0
// What other programs' lines show in figures: iperf's rates, and the access points of the
// supplicant's scan listing.
#pragma once

#include <optional>
#include <string_view>

namespace wivex::report {

/// One report line of iperf (version 2 or 3).
struct TrafficFigure {
    /// Of all streams together, not of a single one.
    bool is_sum = false;
    double begin = 0;
    double end = 0;
    double megabits_per_second = 0;

    /// A line over the whole measurement, as iperf prints it last.
    bool is_total() const {
        return begin < 0.5 && end > 1.5;
    }
};

std::optional<TrafficFigure> read_traffic(std::string_view line);

/// One access point of a scan listing of the supplicant, as the tool shows it with -u.
struct ListedAccessPoint {
    std::string_view bssid;
    int frequency = 0;
    double signal = 0;
    std::string_view ssid;
};

std::optional<ListedAccessPoint> read_access_point(std::string_view line);

} // namespace wivex::report

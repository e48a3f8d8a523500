// SPDX-License-Identifier: Apache-2.0
// Figures that stand in console lines of other programs: iperf's rates, access points of a scan
// listing, time stamps that a logging tool put before each line.
#pragma once

#include <cstdint>
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

/// How a logging tool writes its time stamps.
enum class StampFormat : std::uint8_t {
    none,
    epoch, ///< 1718186400.123
    iso,   ///< 2024-06-12T10:11:12.123, also with a blank and in [brackets]
    clock, ///< 10:11:12.123
    month, ///< Jun 12 10:11:12
};

struct Stamp {
    StampFormat format = StampFormat::none;
    /// Seconds; only differences mean something.
    double seconds = 0;
    /// The stamp as it stands, and the line behind it.
    std::string_view text;
    std::string_view rest;
};

/// Reads a stamp of `format`, or of any format when that is `StampFormat::none`.
std::optional<Stamp> read_stamp(std::string_view line, StampFormat format);

/// The decimal number at the start of `text`, if there is one.
std::optional<long> read_number(std::string_view text);

} // namespace wivex::report

// SPDX-License-Identifier: Apache-2.0
#include "console/figures.hpp"

#include "console/scanner.hpp"

#include <array>

namespace wivex::report {

namespace {

struct Unit {
    std::string_view name;
    double megabits;
};

constexpr std::array<Unit, 8> units{{
    {"bits/sec", 1e-6},
    {"Kbits/sec", 1e-3},
    {"Mbits/sec", 1},
    {"Gbits/sec", 1e3},
    {"Bytes/sec", 8e-6},
    {"KBytes/sec", 8 * 1.024e-3},
    {"MBytes/sec", 8 * 1.048576},
    {"GBytes/sec", 8 * 1073.741824},
}};

} // namespace

std::optional<TrafficFigure> read_traffic(std::string_view line) {
    if (line.size() < 20 || line.front() != '[') {
        return {};
    }
    Scanner scanner(line.substr(1));
    const std::string_view id = scanner.until(']');
    TrafficFigure figure;
    figure.is_sum = id.starts_with("SUM");
    if (!scanner.good() ||
        (!figure.is_sum && id.find_first_not_of("0123456789 *") != std::string_view::npos)) {
        return {};
    }
    scanner.blanks();
    figure.begin = scanner.decimal();
    scanner.expect('-');
    scanner.blanks();
    figure.end = scanner.decimal();
    scanner.blanks();
    if (!scanner.good() || !scanner.rest().starts_with("sec")) {
        return {};
    }
    scanner.until('c');
    scanner.blanks();
    scanner.decimal();
    scanner.blanks();
    scanner.until(' ');
    scanner.blanks();
    const double rate = scanner.decimal();
    scanner.blanks();
    if (!scanner.good() || rate < 0) {
        return {};
    }
    const std::string_view name = scanner.rest().substr(0, scanner.rest().find_first_of(" \t"));
    for (const Unit& unit : units) {
        if (name == unit.name) {
            figure.megabits_per_second = rate * unit.megabits;
            return figure;
        }
    }
    return {};
}

std::optional<ListedAccessPoint> read_access_point(std::string_view line) {
    constexpr std::size_t bssid_length = 17;
    if (line.size() < 24 || line[2] != ':' || line[14] != ':' || line[bssid_length] != '\t') {
        return {};
    }
    ListedAccessPoint found;
    found.bssid = line.substr(0, bssid_length);
    if (found.bssid.find_first_not_of("0123456789abcdefABCDEF:") != std::string_view::npos) {
        return {};
    }
    Scanner scanner(line.substr(bssid_length + 1));
    found.frequency = static_cast<int>(scanner.number(1, 6));
    scanner.expect('\t');
    found.signal = scanner.decimal();
    scanner.expect('\t');
    scanner.until('\t');
    if (!scanner.good()) {
        return {};
    }
    found.ssid = scanner.rest();
    return found;
}

} // namespace wivex::report

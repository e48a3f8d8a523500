// SPDX-License-Identifier: Apache-2.0
#include "console/time_stamps.hpp"

#include "console/scanner.hpp"

#include <array>

namespace wivex::report {

namespace {

constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";

// Days since the epoch, by counting leap years.
long days_of(long year, long month, long day) {
    constexpr std::array<long, 12> before{0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    const long last = year - 1;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const long in_year = before.at(static_cast<std::size_t>(month - 1)) + day - 1;
    return last * 365 + last / 4 - last / 100 + last / 400 - 719162 + in_year +
           (leap && month > 2 ? 1 : 0);
}

long day_number(Scanner& scanner, long year, long month) {
    const long day = scanner.number(1, 2);
    const bool real = month >= 1 && month <= 12 && day >= 1 && day <= 31;
    return real ? days_of(year, month, day) : -1;
}

std::optional<Stamp> finish(Scanner scanner, std::string_view line, StampFormat format,
                            double seconds) {
    if (!scanner.good()) {
        return {};
    }
    const std::size_t length = line.size() - scanner.rest().size();
    std::string_view rest = scanner.rest();
    if (!rest.empty()) {
        if (rest.front() != ' ' && rest.front() != '\t') {
            return {};
        }
        rest.remove_prefix(1);
    }
    return Stamp{format, seconds, {}, line.substr(0, length), rest};
}

std::optional<Stamp> read_epoch(std::string_view line) {
    Scanner scanner(line);
    const auto seconds = static_cast<double>(scanner.number(9, 11));
    const double part = scanner.fraction();
    return finish(scanner, line, StampFormat::epoch, seconds + part);
}

// "Z", "+02:00", "+0200", "-05": seconds ahead of UTC; none when the stamp names no zone.
std::optional<int> read_zone(Scanner& scanner) {
    if (scanner.optional('Z')) {
        return 0;
    }
    if (!scanner.at('+') && !scanner.at('-')) {
        return {};
    }
    const int sign = scanner.optional('+') ? 1 : -1;
    scanner.optional('-');
    const std::size_t before = scanner.rest().size();
    const long number = scanner.number(2, 4);
    const bool both = before - scanner.rest().size() == 4;
    const long hours = both ? number / 100 : number;
    const long minutes = both ? number % 100 : scanner.optional(':') ? scanner.number(2, 2) : 0;
    return sign * 60 * static_cast<int>(hours * 60 + minutes);
}

std::optional<Stamp> read_iso(std::string_view line) {
    Scanner scanner(line);
    const bool bracket = scanner.optional('[');
    const long year = scanner.number(4, 4);
    scanner.expect('-');
    const long month = scanner.number(2, 2);
    scanner.expect('-');
    const long day = day_number(scanner, year, month);
    if (!scanner.good() || day < 0) {
        return {};
    }
    if (!scanner.optional('T')) {
        scanner.expect(' ');
    }
    const double local = static_cast<double>(day) * 86400 + scanner.clock();
    const std::optional<int> zone = read_zone(scanner);
    if (bracket) {
        scanner.expect(']');
    }
    auto stamp = finish(scanner, line, StampFormat::iso, local - zone.value_or(0));
    if (stamp) {
        stamp->zone = zone;
    }
    return stamp;
}

std::optional<Stamp> read_clock(std::string_view line) {
    Scanner scanner(line);
    const bool bracket = scanner.optional('[');
    const double seconds = scanner.clock();
    if (bracket) {
        scanner.expect(']');
    }
    return finish(scanner, line, StampFormat::clock, seconds);
}

std::optional<Stamp> read_month(std::string_view line) {
    if (line.size() < 15) {
        return {};
    }
    const std::size_t found = months.find(line.substr(0, 3));
    if (found == std::string_view::npos || found % 3 != 0) {
        return {};
    }
    Scanner scanner(line.substr(3));
    scanner.expect(' ');
    scanner.blanks();
    const long day = day_number(scanner, 2001, static_cast<long>(found / 3 + 1));
    scanner.expect(' ');
    const double seconds = scanner.clock();
    if (day < 0) {
        return {};
    }
    return finish(scanner, line, StampFormat::month, static_cast<double>(day) * 86400 + seconds);
}

} // namespace

std::optional<Stamp> read_stamp(std::string_view line, StampFormat format) {
    switch (format) {
    case StampFormat::epoch:
        return read_epoch(line);
    case StampFormat::iso:
        return read_iso(line);
    case StampFormat::clock:
        return read_clock(line);
    case StampFormat::month:
        return read_month(line);
    case StampFormat::none:
        break;
    }
    for (const auto read : {read_epoch, read_iso, read_clock, read_month}) {
        if (const auto stamp = read(line)) {
            return stamp;
        }
    }
    return {};
}

} // namespace wivex::report

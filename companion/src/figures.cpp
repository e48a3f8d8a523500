// SPDX-License-Identifier: Apache-2.0
#include "figures.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace wivex::report {

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view months = "JanFebMarAprMayJunJulAugSepOctNovDec";

/// Takes a text apart from its start; once something does not fit, everything fails.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool good() const {
        return good_;
    }
    std::string_view rest() const {
        return rest_;
    }
    bool at(char c) const {
        return good_ && !rest_.empty() && rest_.front() == c;
    }
    void expect(char c) {
        if (!optional(c)) {
            good_ = false;
        }
    }
    bool optional(char c) {
        if (!at(c)) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }
    void blanks() {
        while (optional(' ')) {
        }
    }
    /// A whole number of `least` to `most` digits.
    long number(std::size_t least, std::size_t most) {
        const std::size_t found = rest_.find_first_not_of(digits);
        const std::size_t length = found == std::string_view::npos ? rest_.size() : found;
        if (length < least || length > most) {
            good_ = false;
            return 0;
        }
        long value = 0;
        std::from_chars(rest_.data(), rest_.data() + length, value);
        rest_.remove_prefix(length);
        return value;
    }
    double decimal() {
        double value = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value,
                                                  std::chars_format::fixed);
        if (error != std::errc() || !std::isfinite(value)) {
            good_ = false;
            return 0;
        }
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return value;
    }
    std::string_view until(char c) {
        const std::size_t found = rest_.find(c);
        if (found == std::string_view::npos) {
            good_ = false;
            return {};
        }
        const std::string_view taken = rest_.substr(0, found);
        rest_.remove_prefix(found + 1);
        return taken;
    }
    /// ".123" or ",123" as a part of a second; 0 when there is none.
    double fraction() {
        if (!at('.') && !at(',')) {
            return 0;
        }
        rest_.remove_prefix(1);
        const std::size_t before = rest_.size();
        const long value = number(1, 9);
        const auto places = static_cast<double>(before - rest_.size());
        return static_cast<double>(value) / std::pow(10.0, places);
    }
    /// hh:mm:ss with an optional fraction, in seconds.
    double clock() {
        const long hours = number(2, 2);
        expect(':');
        const long minutes = number(2, 2);
        expect(':');
        const long seconds = number(2, 2);
        const double part = fraction();
        return static_cast<double>(hours * 3600 + minutes * 60 + seconds) + part;
    }

private:
    std::string_view rest_;
    bool good_ = true;
};

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
    return Stamp{format, seconds, line.substr(0, length), rest};
}

std::optional<Stamp> read_epoch(std::string_view line) {
    Scanner scanner(line);
    const auto seconds = static_cast<double>(scanner.number(9, 11));
    const double part = scanner.fraction();
    return finish(scanner, line, StampFormat::epoch, seconds + part);
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
    double seconds = scanner.clock();
    if (!scanner.optional('Z') && (scanner.at('+') || scanner.at('-'))) {
        const double sign = scanner.at('+') ? -1 : 1;
        scanner.optional('+');
        scanner.optional('-');
        const long hours = scanner.number(2, 4);
        const long minutes = scanner.optional(':') ? scanner.number(2, 2) : 0;
        const long whole = hours > 99 ? hours / 100 * 60 + hours % 100 : hours * 60 + minutes;
        seconds += sign * 60 * static_cast<double>(whole);
    }
    if (bracket) {
        scanner.expect(']');
    }
    return finish(scanner, line, StampFormat::iso, static_cast<double>(day) * 86400 + seconds);
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

std::optional<long> read_number(std::string_view text) {
    long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) {
        return {};
    }
    return value;
}

} // namespace wivex::report

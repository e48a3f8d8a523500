// SPDX-License-Identifier: Apache-2.0
#include "common/moment.hpp"

#include "common/local_zone.hpp"
#include "common/words.hpp"

#include <array>
#include <charconv>
#include <ctime>

namespace wivex::line {

namespace {

Moment begin_of(Moment moment, int days) {
    const auto seconds = static_cast<std::time_t>(moment);
    std::tm parts{};
    localtime_r(&seconds, &parts);
    parts.tm_mday += days;
    parts.tm_hour = parts.tm_min = parts.tm_sec = 0;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

// A fraction of a second says nothing here.
std::string without_fraction(std::string_view text) {
    constexpr std::size_t whole = 19;
    std::string rest(text.size() > whole ? text.substr(whole) : "");
    if (rest.starts_with('.')) {
        const std::size_t end = rest.find_first_not_of("0123456789", 1);
        rest.erase(0, end == 1 ? 0 : end);
    }
    return std::string(text.substr(0, whole)) + rest;
}

} // namespace

std::optional<Moment> moment_of(std::string_view text) {
    const std::string plain = without_fraction(text);
    std::tm parts{};
    const char* const end = strptime(plain.c_str(), "%Y-%m-%dT%H:%M:%S%z", &parts);
    // The library reads shorter forms too.
    const bool whole = plain.size() == 25 || (plain.size() == 20 && plain.back() == 'Z');
    if (end == nullptr || *end != '\0' || !whole || parts.tm_year < 70) {
        return {};
    }
    const Moment offset = parts.tm_gmtoff;
    std::tm date = parts;
    const Moment moment = timegm(&date);
    return date.tm_mday == parts.tm_mday ? std::optional(moment - offset) : std::nullopt;
}

std::string moment_text(Moment moment) {
    return report::local_time(moment);
}

std::string stamp_text(Moment moment) {
    const auto utc = static_cast<double>(moment);
    return report::rfc3339({utc, report::local_offset(utc)});
}

std::string day_text(Moment moment) {
    return moment_text(moment).substr(0, 10);
}

Moment day_begin(Moment moment, int back) {
    return begin_of(moment, -back);
}

std::optional<Moment> span_of(std::string_view text) {
    constexpr std::string_view units = "smhd";
    constexpr std::array<Moment, 4> seconds{1, 60, seconds_of_hour, seconds_of_day};
    Moment count = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, count);
    const std::size_t unit = stop + 1 == end ? units.find(*stop) : std::string_view::npos;
    if (error != std::errc() || unit == std::string_view::npos || count < 1 || count > 1'000'000) {
        return {};
    }
    return count * seconds.at(unit);
}

Moment DayTeller::day_of(Moment moment) {
    if (moment < begin_ || moment >= end_) {
        begin_ = begin_of(moment, 0);
        end_ = begin_of(moment, 1);
    }
    return begin_;
}

} // namespace wivex::line

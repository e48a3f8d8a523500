// SPDX-License-Identifier: Apache-2.0
#include "common/instant.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace wivex::report {

namespace {

// 0000-01-01T00:00:00 and 9999-12-31T23:59:59.
constexpr double first_second = -62167219200.0;
constexpr double last_second = 253402300799.0;

} // namespace

std::string rfc3339(const Instant& instant) {
    // Zones of long ago are off by seconds, which the format cannot say.
    const int minutes = instant.offset / 60;
    const double local = std::floor(instant.utc) + minutes * 60;
    if (!(local >= first_second && local <= last_second) || std::abs(minutes) >= 24 * 60) {
        return {};
    }
    const auto seconds = static_cast<std::time_t>(local);
    std::tm parts{};
    std::array<char, 32> date{};
    if (gmtime_r(&seconds, &parts) == nullptr) {
        return {};
    }
    const int year = parts.tm_year + 1900;
    std::strftime(date.data(), date.size(), "-%m-%dT%H:%M:%S", &parts);
    std::array<char, 96> text{};
    std::snprintf(text.data(), text.size(), "%04d%s%c%02d:%02d", year, date.data(),
                  minutes < 0 ? '-' : '+', std::abs(minutes) / 60, std::abs(minutes) % 60);
    return text.data();
}

} // namespace wivex::report

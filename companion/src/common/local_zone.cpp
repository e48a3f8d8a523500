// SPDX-License-Identifier: Apache-2.0
#include "common/local_zone.hpp"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace wivex::report {

namespace {

// No zone changes its offset in the middle of one.
constexpr double quarter_of_an_hour = 900;
constexpr double day = 86400;
// Two writers of one log may disagree by so much.
constexpr double disorder = 1;

// `current`: the offset of `last`.
int chosen_offset(double local, double last, int current) {
    const int before = local_offset(local - day);
    const int after = local_offset(local + day);
    if (before == after) {
        return before;
    }
    const auto is_real = [local](int offset) { return local_offset(local - offset) == offset; };
    const int first = std::max(before, after);
    const int second = std::min(before, after);
    if (is_real(first) && is_real(second)) {
        const bool is_later = current == second && std::isfinite(last);
        return !is_later && local - first >= last - disorder ? first : second;
    }
    return is_real(after) ? after : before;
}

} // namespace

int local_offset(double utc) {
    constexpr double farthest = 1e11;
    const auto seconds = static_cast<std::time_t>(std::clamp(utc, -farthest, farthest));
    std::tm parts{};
    return localtime_r(&seconds, &parts) == nullptr ? 0 : static_cast<int>(parts.tm_gmtoff);
}

Instant LocalZone::instant(double local) {
    const double quarter = std::floor(local / quarter_of_an_hour);
    if (quarter != quarter_ || local - offset_ < last_ - disorder) {
        offset_ = chosen_offset(local, last_, offset_);
        quarter_ = quarter;
    }
    last_ = local - offset_;
    return {last_, offset_};
}

} // namespace wivex::report

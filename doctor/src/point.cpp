// SPDX-License-Identifier: Apache-2.0
#include "point.hpp"

#include <algorithm>
#include <utility>

namespace wivex::doctor {

State Point::state() const {
    State worst = skipped ? State::not_checked : State::good;
    for (const Remark& remark : remarks) {
        worst = std::max(worst, remark.state);
    }
    return worst;
}

void Point::note(std::string what, std::string mend) {
    remarks.push_back({State::good, std::move(what), {}, std::move(mend)});
}

void Point::bad(std::string what, std::string prints, std::string mend) {
    remarks.push_back({State::bad, std::move(what), std::move(prints), std::move(mend)});
}

void Point::unknown(std::string what, std::string prints, std::string mend) {
    remarks.push_back({State::not_known, std::move(what), std::move(prints), std::move(mend)});
}

void Point::skip(std::string reason) {
    skipped = true;
    found = std::move(reason);
}

std::string Point::first_prints() const {
    const auto first = std::find_if(remarks.begin(), remarks.end(), [](const Remark& remark) {
        return remark.state > State::not_checked;
    });
    return first == remarks.end() ? std::string() : first->prints;
}

bool is_ready(const std::vector<Point>& points) {
    return std::all_of(points.begin(), points.end(),
                       [](const Point& point) { return point.state() <= State::not_checked; });
}

} // namespace wivex::doctor

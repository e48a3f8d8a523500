// SPDX-License-Identifier: Apache-2.0
#include "supplicant/agenda.hpp"

#include <time.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace bench {

Microseconds now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<Microseconds>(time.tv_sec) * 1'000'000 + time.tv_nsec / 1000;
}

void Agenda::plan(Microseconds moment, std::function<void()> act, InSleep in_sleep) {
    dues_.push_back({moment, std::move(act), in_sleep});
}

Microseconds Agenda::time_to_next(bool asleep) const {
    constexpr Microseconds an_hour = 3'600'000'000;
    if (dues_.empty()) {
        return -1;
    }
    Microseconds next = std::numeric_limits<Microseconds>::max();
    for (const Due& due : dues_) {
        if (due.can_happen(asleep)) {
            next = std::min(next, due.moment);
        }
    }
    return std::clamp(next - now(), Microseconds{0}, an_hour);
}

void Agenda::do_what_is_due(bool asleep) {
    const Microseconds time = now();
    std::stable_sort(dues_.begin(), dues_.end(),
                     [](const Due& a, const Due& b) { return a.moment < b.moment; });
    std::vector<Due> ready;
    std::erase_if(dues_, [&](const Due& due) {
        const bool is_due = due.moment <= time && due.can_happen(asleep);
        if (is_due) {
            ready.push_back(due);
        }
        return is_due;
    });
    for (const Due& due : ready) {
        due.act();
    }
}

} // namespace bench

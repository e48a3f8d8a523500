// SPDX-License-Identifier: Apache-2.0
// What the supplicant does later, each thing at its moment.
#pragma once

#include <functional>
#include <vector>

namespace bench {

using Microseconds = long long;

/// The time of the monotonic clock.
Microseconds now();

class Agenda {
public:
    /// What becomes of a thing that falls due while the supplicant sleeps.
    enum class InSleep { waits, happens };

    void plan(Microseconds moment, std::function<void()> act, InSleep in_sleep = InSleep::waits);

    /// How long it is to the next thing that can happen: 0 when its moment has passed, -1 when
    /// nothing is planned.
    Microseconds time_to_next(bool asleep) const;

    /// Does what is due now, in the order of the moments. What that plans waits for the next call.
    void do_what_is_due(bool asleep);

private:
    struct Due {
        Microseconds moment;
        std::function<void()> act;
        InSleep in_sleep;

        bool can_happen(bool asleep) const {
            return !asleep || in_sleep == InSleep::happens;
        }
    };

    std::vector<Due> dues_;
};

} // namespace bench

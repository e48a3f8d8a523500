// SPDX-License-Identifier: Apache-2.0
// A time-out in whole seconds of the wall clock.
#pragma once

#include <cstdint>
#include <ctime>

namespace wivex {

class DeadlineTimer {
public:
    /// Begins a time-out of `seconds` now.
    void start(std::int32_t seconds);

    /// False while the time-out runs. Once it has passed, this and every later call returns true.
    bool expired();

private:
    std::int32_t duration_ = 0;
    std::time_t start_ = 0;
};

} // namespace wivex

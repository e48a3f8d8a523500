// SPDX-License-Identifier: Apache-2.0
#include "common/deadline_timer.hpp"

namespace wivex {

void DeadlineTimer::start(std::int32_t seconds) {
    start_ = std::time(nullptr);
    duration_ = seconds;
}

bool DeadlineTimer::expired() {
    if (std::time(nullptr) - start_ < duration_) {
        return false;
    }
    duration_ = 0;
    start_ = 0;
    return true;
}

} // namespace wivex

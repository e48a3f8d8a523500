// SPDX-License-Identifier: Apache-2.0
#include "made_up_clock.hpp"

namespace wivex::test_support {

namespace {

constexpr const char* sleeps = "sleeps";
constexpr const char* waits = "waits";
constexpr std::time_t endless_seconds = 1000;

// An answer is waited for longer, a console for another event.
bool waits_for_an_event(const pollfd& descriptor, int timeout_ms) {
    constexpr int second_and_a_tick_ms = 1010;
    return descriptor.events == POLLIN && timeout_ms > 0 && timeout_ms <= second_and_a_tick_ms;
}

} // namespace

MadeUpClock::MadeUpClock(const FakeSupplicant* supplicant) : supplicant_(supplicant) {
    calls_.time = [this] { return now_; };
    calls_.gettimeofday = [this](timeval& now) {
        now = {now_, 0};
        return 0;
    };
    calls_.nanosleep = [this](const timespec& duration, timespec&) {
        tell(sleeps, duration.tv_sec);
        return 0;
    };
    calls_.poll = [this](pollfd& descriptor, int timeout_ms) {
        if (!waits_for_an_event(descriptor, timeout_ms)) {
            return really_poll(descriptor, timeout_ms);
        }
        if (!passes_a_second(descriptor)) {
            return 1;
        }
        tell(waits, 1);
        return 0;
    };
}

std::vector<std::string> MadeUpClock::story() const {
    std::vector<std::string> texts;
    texts.reserve(steps_.size());
    for (const Step& step : steps_) {
        texts.push_back(std::string(step.verb) + " " + std::to_string(step.seconds) + " s");
    }
    return texts;
}

bool MadeUpClock::passes_a_second(pollfd& descriptor) const {
    // Asked first: what is said between the two questions is found by the second.
    while (supplicant_ != nullptr && !supplicant_->has_said_all()) {
        if (really_poll(descriptor, 1) != 0) {
            return false;
        }
    }
    return really_poll(descriptor, 0) == 0;
}

void MadeUpClock::tell(const char* verb, std::time_t seconds) {
    now_ += seconds;
    if (verb == waits && !steps_.empty() && steps_.back().verb == waits) {
        steps_.back().seconds += seconds;
    } else {
        steps_.push_back({verb, seconds});
    }
    if (steps_.back().seconds >= endless_seconds) {
        throw EndlessWait();
    }
}

} // namespace wivex::test_support

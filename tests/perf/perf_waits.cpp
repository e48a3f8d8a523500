// SPDX-License-Identifier: Apache-2.0
// Processor time of each kind of wait over 60 seconds, against the same wait as a polling loop.

#include "common/deadline_timer.hpp"
#include "common/shell.hpp"
#include "common/waiting.hpp"
#include "counterpart.hpp"
#include "ctrl/event_wait.hpp"
#include "ctrl/supplicant_session.hpp"
#include "measure.hpp"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr double limit_ms = 50;
constexpr int seconds = 60;

// The polling loop is cut short and scaled up: it is known to take all of its time.
constexpr int polled_seconds = 2;

template <typename Wait>
double processor_ms(Wait wait) {
    const double before = perf::processor_time();
    wait();
    return (perf::processor_time() - before) * 1e3;
}

double polled_ms(wivex::SupplicantSession& session) {
    const double spent = processor_ms([&] {
        wivex::DeadlineTimer timer;
        timer.start(polled_seconds);
        while (session.waitForEvent("NEVER") != 1 && !timer.expired()) {
        }
    });
    return spent * seconds / polled_seconds;
}

} // namespace

int main() {
    perf::MeasuredSession measured;
    wivex::SupplicantSession& session = measured.get();
    const double event = processor_ms([&] {
        wivex::DeadlineTimer timer;
        timer.start(seconds);
        wivex::await_event(session, timer, "NEVER");
    });
    perf::print_figure("60 s wait for an event", "ms", event, limit_ms);
    const double pause = processor_ms([] {
        wivex::DeadlineTimer timer;
        timer.start(seconds);
        wivex::wait_until_expired(timer);
    });
    perf::print_figure("60 s pause on a deadline", "ms", pause, limit_ms);
    perf::print_figure("60 s child", "ms", processor_ms([] { wivex::run_shell("sleep 60"); }),
                       limit_ms);
    const double polled = polled_ms(session);
    std::printf("the same wait as a polling loop: %.0f ms, %.0f times as much\n", polled,
                polled / event);
    return 0;
}

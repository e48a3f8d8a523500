// SPDX-License-Identifier: Apache-2.0
#include "ctrl/event_wait.hpp"

namespace wivex {

bool await_event(SupplicantSession& session, DeadlineTimer& timer, const char* event,
                 EventMatcher matcher, const char* argument) {
    while (session.waitForEvent(event, matcher, argument) != 1) {
        if (timer.expired()) {
            return false;
        }
        session.waitForMessage();
    }
    return true;
}

bool await_event_in_time(SupplicantSession& session, std::int32_t seconds, const char* event,
                         EventMatcher matcher, const char* argument) {
    DeadlineTimer timer;
    timer.start(seconds);
    await_event(session, timer, event, matcher, argument);
    return !timer.expired();
}

void await_event_forever(SupplicantSession& session, const char* event) {
    while (session.waitForEvent(event) != 1) {
        session.waitForMessage();
    }
}

int await_event_any(SupplicantSession& session, DeadlineTimer& timer, const char* event,
                    EventMatcher matcher, std::span<const char* const> candidates) {
    int found = session.waitForEventAny(event, matcher, candidates);
    while (found < 0 && !timer.expired()) {
        session.waitForMessage();
        found = session.waitForEventAny(event, matcher, candidates);
    }
    return found;
}

} // namespace wivex

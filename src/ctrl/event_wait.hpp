// SPDX-License-Identifier: Apache-2.0
// Waiting for a supplicant event, with or without a deadline.
//
// Each wait first reads what is queued and then sleeps until the next message or the next second of
// the wall clock.
#pragma once

#include "common/deadline_timer.hpp"
#include "ctrl/supplicant_session.hpp"

#include <cstdint>
#include <span>

namespace wivex {

/// Waits until `waitForEvent` returns 1 or `timer` has expired. Returns true when it was the event.
bool await_event(SupplicantSession& session, DeadlineTimer& timer, const char* event,
                 EventMatcher matcher = nullptr, const char* argument = nullptr);

/// Waits for at most `seconds`. Returns true when the event was read before the deadline; one that
/// is read at the deadline counts as a time-out.
bool await_event_in_time(SupplicantSession& session, std::int32_t seconds, const char* event,
                         EventMatcher matcher = nullptr, const char* argument = nullptr);

/// Waits until `waitForEvent` returns 1, however long that takes.
void await_event_forever(SupplicantSession& session, const char* event);

/// Waits until `waitForEventAny` names a candidate or `timer` has expired. Returns its result.
int await_event_any(SupplicantSession& session, DeadlineTimer& timer, const char* event,
                    EventMatcher matcher, std::span<const char* const> candidates);

} // namespace wivex

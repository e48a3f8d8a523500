// SPDX-License-Identifier: Apache-2.0
// A session whose other end is in the hands of a fuzz target: replies and events are queued before
// the code under test asks for them.
#pragma once

#include "ctrl/supplicant_session.hpp"

#include <string_view>

namespace fuzz {

/// The one open session of the process; opened at the first call.
wivex::SupplicantSession& session();

/// Queues a datagram on the command connection or on the event connection.
void queue_reply(std::string_view reply);
void queue_event(std::string_view message);

/// Queues `reply` and enough plain replies behind it that no command waits.
void queue_replies_for_all(std::string_view reply);

/// Throws away what was left in all queues.
void drain();

} // namespace fuzz

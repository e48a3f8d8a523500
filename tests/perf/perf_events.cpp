// SPDX-License-Identifier: Apache-2.0
// Draining and matching queued events, against a bare receive loop over the same queue.

#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "counterpart.hpp"
#include "ctrl/supplicant_session.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "measure.hpp"

#include <sys/socket.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

// As many as the kernel queues on one connection by default.
constexpr int events_a_batch = 10;
constexpr int batches = 10'000;

void queue_events(wivex::SupplicantSession& session) {
    wivex::ReplyBuffer buffer;
    wivex::Reply reply(buffer);
    session.sendCommand("EVENT " + std::to_string(events_a_batch), reply);
    // The next answer comes when all events of this one have been sent.
    session.sendCommand("PING", reply);
}

void drain_bare(int fd) {
    static std::array<char, 1248> message;
    while (recv(fd, message.data(), message.size() - 1, 0) >= 0) {
    }
}

void drain_through_session(wivex::SupplicantSession& session) {
    session.waitForEvent("CTRL-EVENT-CONNECTED");
}

template <typename Drain>
double microseconds(wivex::SupplicantSession& session, Drain drain) {
    queue_events(session);
    return perf::microseconds_of(drain) / events_a_batch;
}

} // namespace

int main() {
    perf::MeasuredSession measured;
    wivex::SupplicantSession& session = measured.get();
    const int fd = wivex::wpa_ctrl_get_fd(*wivex::event_connection);
    perf::compare_with_floor(
        "draining an event", "us", batches,
        [&] { return microseconds(session, [&] { drain_through_session(session); }); },
        [&] { return microseconds(session, [&] { drain_bare(fd); }); }, 1.3);
    return 0;
}

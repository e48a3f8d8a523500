// SPDX-License-Identifier: Apache-2.0
// A command through the session, against a bare send and receive on a connection of the same kind.

#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "counterpart.hpp"
#include "ctrl/supplicant_session.hpp"
#include "ctrl/wpa_ctrl.hpp"
#include "measure.hpp"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cstdio>

namespace {

constexpr int rounds = 20;
constexpr int commands_a_round = 5000;

void bare_round_trip(int fd) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the floor does no work of its own
    std::array<char, 1248> reply;
    send(fd, "PING", 4, 0);
    pollfd waiting{fd, POLLIN, 0};
    poll(&waiting, 1, -1);
    recv(fd, reply.data(), reply.size(), 0);
}

void session_round_trip(wivex::SupplicantSession& session) {
    wivex::ReplyBuffer buffer;
    wivex::Reply reply(buffer);
    session.sendCommand("PING", reply);
}

template <typename RoundTrip>
double microseconds(RoundTrip round_trip) {
    const auto many = [&round_trip] {
        for (int count = 0; count < commands_a_round; ++count) {
            round_trip();
        }
    };
    return perf::microseconds_of(many) / commands_a_round;
}

} // namespace

int main() {
    perf::MeasuredSession measured;
    wivex::SupplicantSession& session = measured.get();
    const int bare = wivex::wpa_ctrl_get_fd(*wivex::command_connection);
    perf::compare_with_floor(
        "command round trip", "us", rounds,
        [&] { return microseconds([&] { session_round_trip(session); }); },
        [&] { return microseconds([&] { bare_round_trip(bare); }); }, 1.25);
    return 0;
}

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
#include <vector>

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
    const double start = perf::now();
    for (int count = 0; count < commands_a_round; ++count) {
        round_trip();
    }
    return (perf::now() - start) * 1e6 / commands_a_round;
}

} // namespace

int main() {
    perf::MeasuredSession measured;
    wivex::SupplicantSession& session = measured.get();
    const int bare = wivex::wpa_ctrl_get_fd(*wivex::command_connection);
    std::vector<double> through_session;
    std::vector<double> floor;
    for (int round = 0; round < rounds; ++round) {
        through_session.push_back(microseconds([&] { session_round_trip(session); }));
        floor.push_back(microseconds([&] { bare_round_trip(bare); }));
    }
    perf::print_against_floor("command round trip", "us", perf::quantile(through_session, 0.5),
                              perf::quantile(floor, 0.5), 1.25);
    return 0;
}

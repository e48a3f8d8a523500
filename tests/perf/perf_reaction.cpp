// SPDX-License-Identifier: Apache-2.0
// From the sending of an event to the arrival of the next command, as the supplicant sees it.

#include "common/buffers.hpp"
#include "counterpart.hpp"
#include "ctrl/event_wait.hpp"
#include "ctrl/supplicant_session.hpp"
#include "measure.hpp"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int samples = 1000;

double reaction_microseconds(wivex::SupplicantSession& session) {
    wivex::ReplyBuffer buffer{};
    wivex::Reply reply(buffer);
    session.sendCommand("EVENT 1", reply);
    wivex::await_event_forever(session, "CTRL-EVENT-BSS-ADDED");
    session.sendCommand("DELAY", reply);
    return std::atof(reply.c_str());
}

} // namespace

int main() {
    perf::MeasuredSession measured;
    wivex::SupplicantSession& session = measured.get();
    std::vector<double> delays;
    delays.reserve(samples);
    for (int sample = 0; sample < samples; ++sample) {
        delays.push_back(reaction_microseconds(session));
    }
    perf::print_figure("event to next command, median", "us", perf::quantile(delays, 0.5), 200);
    perf::print_figure("event to next command, 99th", "us", perf::quantile(delays, 0.99), 1000);
    return 0;
}

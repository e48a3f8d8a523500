// SPDX-License-Identifier: Apache-2.0
// A given amount of work, to be counted in instructions from outside: a run of twice the work costs
// twice the instructions, beside what every run costs.

#include "common/buffers.hpp"
#include "common/process_state.hpp"
#include "counterpart.hpp"
#include "ctrl/supplicant_session.hpp"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

constexpr int batches = 1000;

void send(wivex::SupplicantSession& session, const std::string& command) {
    wivex::ReplyBuffer buffer;
    wivex::Reply reply(buffer);
    session.sendCommand(command, reply);
}

// The commands are the same for every number of one digit.
void drain_batches(wivex::SupplicantSession& session, int events_a_batch) {
    for (int batch = 0; batch < batches; ++batch) {
        send(session, "EVENT " + std::to_string(events_a_batch));
        // The next answer comes when all events of this one have been sent.
        send(session, "PING");
        session.waitForEvent("CTRL-EVENT-CONNECTED");
    }
}

void send_commands(wivex::SupplicantSession& session, int count) {
    for (int sent = 0; sent < count; ++sent) {
        send(session, "PING");
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::string_view work(argc == 3 ? argv[1] : "");
    const int amount = argc == 3 ? std::atoi(argv[2]) : 0;
    if ((work != "commands" && work != "events") || amount < 1) {
        std::puts("usage: perf_instructions commands COUNT | events COUNT-A-BATCH");
        return 2;
    }
    perf::MeasuredSession measured;
    if (work == "events") {
        drain_batches(measured.get(), amount);
    } else {
        send_commands(measured.get(), amount);
    }
    return 0;
}

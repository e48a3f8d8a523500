// SPDX-License-Identifier: Apache-2.0
#include "supplicant/events.hpp"

#include <algorithm>

namespace bench {

namespace {

constexpr Microseconds pause_when_full = 1000;

// A flood must not keep commands from being read.
constexpr int events_in_a_row = 200;

} // namespace

// Unread events take up the room in which replies are sent too, and must leave some of it. Returns
// false when they do not, or when somebody's queue is full.
bool Events::broadcast(const std::string& text) const {
    const auto& clients = server_.attached();
    return server_.has_room() &&
           std::all_of(clients.begin(), clients.end(), [&](const Client& client) {
               return server_.send(client, text, ControlServer::WhenFull::fails);
           });
}

// Sends what an event still owes, as far as it fits now. Returns when to go on, or -1.
Microseconds Events::send_some(Owed& event) const {
    for (int sent = 0; event.times != 0 && !server_.attached().empty(); ++sent) {
        if (sent == events_in_a_row || !broadcast(event.text)) {
            return now() + (sent == events_in_a_row ? 0 : pause_when_full);
        }
        event.times -= event.times > 0 ? 1 : 0;
    }
    return -1;
}

void Events::send(const std::string& text, int times) {
    Owed event{text, times};
    if (times > 0) {
        owed_.push_back(event);
        if (owed_.size() == 1) {
            send_owed();
        }
        return;
    }
    const Microseconds moment = send_some(event);
    if (moment >= 0) {
        agenda_.plan(moment, [this, event] { send(event.text, event.times); });
    }
}

void Events::send_owed() {
    while (!owed_.empty()) {
        const Microseconds moment = send_some(owed_.front());
        if (moment >= 0) {
            agenda_.plan(moment, [this] { send_owed(); });
            return;
        }
        owed_.pop_front();
    }
}

void Events::drop() {
    owed_.clear();
}

} // namespace bench

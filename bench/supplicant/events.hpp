// SPDX-License-Identifier: Apache-2.0
// Events on their way to the clients, however many they are and however slowly they are read.
#pragma once

#include "supplicant/agenda.hpp"
#include "supplicant/control_server.hpp"

#include <deque>
#include <string>

namespace bench {

class Events {
public:
    Events(const ControlServer& server, Agenda& agenda) : server_(server), agenda_(agenda) {}

    /// Sends an event to everyone who is attached, `times` times or, when that is negative, for
    /// ever. Events leave in the order in which they were sent: one that does not fit yet holds
    /// those behind it back. Only an endless one lets others pass.
    void send(const std::string& text, int times = 1);

    /// Those that have not left yet never do, except the endless ones.
    void drop();

private:
    struct Owed {
        std::string text;
        int times;
    };

    bool broadcast(const std::string& text) const;
    Microseconds send_some(Owed& event) const;
    void send_owed();

    const ControlServer& server_;
    Agenda& agenda_;
    std::deque<Owed> owed_;
};

} // namespace bench

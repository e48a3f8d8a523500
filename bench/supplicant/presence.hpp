// SPDX-License-Identifier: Apache-2.0
// Whether the supplicant is there: its control sockets, which it closes when it dies and does not
// read while it sleeps.
#pragma once

#include "supplicant/agenda.hpp"
#include "supplicant/control_server.hpp"

#include <array>
#include <functional>
#include <string>

namespace bench {

class Presence {
public:
    /// `folder` is that of the control sockets "wlan0" and "p2p0".
    explicit Presence(std::string folder);

    /// Creates the folder and the sockets, unless they are open. Ends the process after a message
    /// when that fails.
    void come();
    /// Closes the sockets and forgets who was attached.
    void die();
    void fall_asleep() {
        asleep_ = true;
    }
    void wake_up() {
        asleep_ = false;
    }
    bool asleep() const {
        return asleep_;
    }

    /// Waits for commands, at most `longest` or, when that is negative, without end, and hands each
    /// on with the socket that it came through.
    void
    listen(Microseconds longest,
           const std::function<void(const ControlServer& server, const Command& command)>& take);

    /// The socket that events are sent from, to whoever has attached at either.
    ControlServer& event_server() {
        return servers_[0];
    }

private:
    std::string folder_;
    std::array<ControlServer, 2> servers_;
    bool asleep_ = false;
};

} // namespace bench

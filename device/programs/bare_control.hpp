// SPDX-License-Identifier: Apache-2.0
// A client of a control socket that makes the system calls and nothing else.
#pragma once

#include "control_socket.hpp"

#include <string_view>

class BareControl {
public:
    // Binds to /tmp/bare-control-PROCESS-NUMBER and connects to the socket at the path `server`.
    // When either cannot be done, no request succeeds.
    BareControl(std::string_view server, int number);

    // Sends a command and waits for its answer. False when there is none, or one that begins with
    // "FAIL".
    bool request(std::string_view command) const;
    // Reads what has come and sleeps till the next second of the clock, until an event holds the
    // text. False when the socket has failed.
    bool await_event(std::string_view text) const;

private:
    ControlSocket socket_;
};

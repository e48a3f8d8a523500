// SPDX-License-Identifier: Apache-2.0
// A datagram connection to a control socket of a supplicant or access point.
#pragma once

#include <sys/un.h>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

using Clock = std::chrono::steady_clock;

constexpr std::size_t longest_message = 16384;

// The address of a socket file; nothing when the path is too long for one.
std::optional<sockaddr_un> address_of(std::string_view path);

// An event, as opposed to the reply to a command.
bool is_event(std::string_view message);

class ControlSocket {
public:
    ControlSocket() = default;
    ControlSocket(const ControlSocket&) = delete;
    ControlSocket& operator=(const ControlSocket&) = delete;
    ~ControlSocket();

    // Binds to the path `own`, where a file left behind is replaced, and connects to the socket at
    // the path `server`. False when either cannot be done.
    bool open(std::string_view server, std::string_view own);
    bool send(std::string_view message) const;
    // One message; nothing when none has come by the deadline, or the connection has failed.
    std::optional<std::string> receive(Clock::time_point deadline) const;
    int descriptor() const {
        return descriptor_;
    }

private:
    int descriptor_ = -1;
    std::string own_;
};

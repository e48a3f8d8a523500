// SPDX-License-Identifier: Apache-2.0
// Client of the supplicant's control interface: one connection is one Unix datagram socket on which
// text commands go out and text replies and event messages come back. Nothing else in the program
// touches these sockets.
#pragma once

#include <sys/un.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace wivex {

/// One control connection. Made by `wpa_ctrl_open`, released only by `wpa_ctrl_close`.
struct wpa_ctrl {
    int socket;
    /// The client's own name, always a file under /tmp.
    sockaddr_un local;
    /// The supplicant's socket: a path, or an abstract name.
    sockaddr_un dest;
};

/// Receives an event message that arrived while a command waited for its reply.
using EventCallback = void (*)(const char* message, std::size_t length);

/// Connects to the control socket at `path`; "@abstract:NAME" means an abstract name. The
/// connection does not block. Returns null on any failure.
wpa_ctrl* wpa_ctrl_open(const char* path);

/// Closes the connection and removes its socket file. While `sigterm_var` is set the record itself
/// stays allocated. Null does nothing.
void wpa_ctrl_close(wpa_ctrl* ctrl);

/// Lets go of a connection that was left open by design: closes and frees it without a trace on the
/// console. Its socket file is left to `wpa_ctrl_cleanup`. Null does nothing.
void wpa_ctrl_retire(wpa_ctrl* ctrl);

/// Sends `command` and waits for its reply. `reply_length` gives the room in `reply` and receives
/// the number of bytes stored there, without a terminator. Event messages that come first go to
/// `callback` when there is one. Returns 0, -1 when sending or receiving failed (a peer that stays
/// busy is tried for 5 seconds), or -2 when 10 seconds passed without a message.
int wpa_ctrl_request(wpa_ctrl& ctrl, std::string_view command, char* reply,
                     std::size_t& reply_length, EventCallback callback = nullptr);

/// Registers for event messages, or leaves them. Returns 0 when the reply is exactly "OK\n", -1 on
/// any other reply, or the failure of `wpa_ctrl_request`.
int wpa_ctrl_attach(wpa_ctrl& ctrl);
int wpa_ctrl_detach(wpa_ctrl& ctrl);

/// Receives one message without waiting. Returns 0 and its length in `length` (which gave the room
/// in `buffer`), or -1 when nothing is there.
int wpa_ctrl_recv(wpa_ctrl& ctrl, char* buffer, std::size_t& length);

/// True when a message can be received now. Part of the interface; nothing here calls it.
bool wpa_ctrl_pending(const wpa_ctrl& ctrl);

int wpa_ctrl_get_fd(const wpa_ctrl& ctrl);

/// Removes every client socket file in /tmp, whichever process made it.
void wpa_ctrl_cleanup();

/// Sleeps `seconds`, then `microseconds`.
void os_sleep(std::int64_t seconds, std::int64_t microseconds);

/// Wall-clock time. Returns 0, or -1 on failure.
int os_get_time(std::int64_t& seconds, std::int64_t& microseconds);

/// Copies at most `size` - 1 characters and terminates when `size` is not 0. Returns the length of
/// `source`; a result of `size` or more means that it was cut.
std::size_t os_strlcpy(char* destination, const char* source, std::size_t size);

} // namespace wivex

// SPDX-License-Identifier: Apache-2.0
// The server's end of a supplicant's control socket: commands come in as datagrams, replies and
// events go out.
#pragma once

#include <sys/socket.h>
#include <sys/un.h>

#include <optional>
#include <string>
#include <vector>

namespace bench {

/// A client, by the address of its socket.
struct Client {
    sockaddr_un address{};
    socklen_t length = 0;

    /// The path of its socket.
    std::string name() const {
        return address.sun_path;
    }
    bool operator==(const Client& other) const;
};

struct Command {
    Client client;
    std::string text;
};

class ControlServer {
public:
    /// What a send does when the client's queue is full.
    enum class WhenFull { waits, fails };

    ControlServer() = default;
    ~ControlServer() {
        close();
    }
    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    /// Listens at `path`; a first character '@' stands for the zero byte of an abstract name. A
    /// file that stands there is removed. Returns false, with errno set, when that fails.
    bool open(const std::string& path);

    /// Nobody is heard or attached any longer. The socket's file stays, as that of a supplicant
    /// that was killed.
    void close();

    bool is_open() const {
        return fd_ >= 0;
    }
    int fd() const {
        return fd_;
    }

    /// The next command, if one has come.
    std::optional<Command> receive() const;

    /// Sends a datagram. False only when the client's queue is full and that makes it fail: what a
    /// client that is gone does not get is nobody's concern.
    bool send(const Client& client, const std::string& text, WhenFull when_full) const;

    /// Whether unread datagrams leave half of the room of this socket, which all clients share.
    bool has_room() const;

    /// Who gets the events.
    const std::vector<Client>& attached() const {
        return attached_;
    }
    void attach(const Client& client);
    void detach(const Client& client);

private:
    int fd_ = -1;
    std::vector<Client> attached_;
};

} // namespace bench

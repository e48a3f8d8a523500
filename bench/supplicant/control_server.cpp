// SPDX-License-Identifier: Apache-2.0
#include "supplicant/control_server.hpp"

#include <linux/sockios.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace bench {

bool Client::operator==(const Client& other) const {
    return length == other.length && std::memcmp(&address, &other.address, length) == 0;
}

bool ControlServer::open(const std::string& path) {
    const bool abstract = path.starts_with('@');
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    path.copy(name.sun_path, sizeof(name.sun_path) - 1);
    if (abstract) {
        name.sun_path[0] = '\0';
    } else {
        unlink(path.c_str());
    }
    close();
    fd_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (bind(fd_, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) != 0) {
        const int problem = errno;
        close();
        errno = problem;
        return false;
    }
    return true;
}

void ControlServer::close() {
    if (is_open()) {
        ::close(std::exchange(fd_, -1));
    }
    attached_.clear();
}

std::optional<Command> ControlServer::receive() const {
    std::array<char, 8192> buffer{};
    Command command;
    command.client.length = sizeof(command.client.address);
    const ssize_t length =
        recvfrom(fd_, buffer.data(), buffer.size(), MSG_DONTWAIT,
                 reinterpret_cast<sockaddr*>(&command.client.address), &command.client.length);
    if (length < 0) {
        return std::nullopt;
    }
    command.text.assign(buffer.data(), static_cast<std::size_t>(length));
    return command;
}

bool ControlServer::send(const Client& client, const std::string& text, WhenFull when_full) const {
    const int flags = when_full == WhenFull::fails ? MSG_DONTWAIT : 0;
    return sendto(fd_, text.data(), text.size(), flags | MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&client.address), client.length) >= 0 ||
           errno != EAGAIN;
}

bool ControlServer::has_room() const {
    int unread = 0;
    int room = 0;
    socklen_t length = sizeof(room);
    return ioctl(fd_, SIOCOUTQ, &unread) != 0 ||
           getsockopt(fd_, SOL_SOCKET, SO_SNDBUF, &room, &length) != 0 || unread < room / 2;
}

void ControlServer::attach(const Client& client) {
    detach(client);
    attached_.push_back(client);
}

void ControlServer::detach(const Client& client) {
    std::erase(attached_, client);
}

} // namespace bench

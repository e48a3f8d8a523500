// SPDX-License-Identifier: Apache-2.0
#include "control_socket.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstring>

std::optional<sockaddr_un> address_of(std::string_view path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        return std::nullopt;
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

bool is_event(std::string_view message) {
    return message.starts_with('<');
}

ControlSocket::~ControlSocket() {
    if (descriptor_ >= 0) {
        close(descriptor_);
        unlink(own_.c_str());
    }
}

bool ControlSocket::open(std::string_view server, std::string_view own) {
    own_ = own;
    const auto local = address_of(own);
    const auto remote = address_of(server);
    if (!local || !remote) {
        return false;
    }
    descriptor_ = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor_ < 0) {
        return false;
    }
    unlink(own_.c_str());
    return bind(descriptor_, reinterpret_cast<const sockaddr*>(&*local), sizeof(*local)) == 0 &&
           connect(descriptor_, reinterpret_cast<const sockaddr*>(&*remote), sizeof(*remote)) == 0;
}

bool ControlSocket::send(std::string_view message) const {
    return ::send(descriptor_, message.data(), message.size(), 0) >= 0;
}

std::optional<std::string> ControlSocket::receive(Clock::time_point deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd waiting{descriptor_, POLLIN, 0};
    if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) <= 0) {
        return std::nullopt;
    }
    std::array<char, longest_message> buffer{};
    const ssize_t length = recv(descriptor_, buffer.data(), buffer.size(), 0);
    if (length < 0) {
        return std::nullopt;
    }
    return std::string(buffer.data(), static_cast<std::size_t>(length));
}

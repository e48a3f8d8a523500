// SPDX-License-Identifier: Apache-2.0
#include "bare_control.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <optional>

namespace {

constexpr int reply_time_limit_ms = 10'000;

void wait_until_readable(int descriptor, int milliseconds) {
    pollfd waiting{descriptor, POLLIN, 0};
    poll(&waiting, 1, milliseconds);
}

// What has come, into a place that is never cleared; nothing, and errno tells why.
std::optional<std::string_view> receive(const ControlSocket& socket) {
    static std::array<char, longest_message> message;
    const ssize_t length = recv(socket.descriptor(), message.data(), message.size(), MSG_DONTWAIT);
    if (length < 0) {
        return std::nullopt;
    }
    return std::string_view(message.data(), static_cast<std::size_t>(length));
}

int milliseconds_to_next_second() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return 1000 - static_cast<int>(now.tv_nsec / 1'000'000);
}

} // namespace

BareControl::BareControl(std::string_view server, int number) {
    const std::string own =
        "/tmp/bare-control-" + std::to_string(getpid()) + "-" + std::to_string(number);
    if (!socket_.open(server, own)) {
        std::perror("control socket");
    }
}

bool BareControl::request(std::string_view command) const {
    if (!socket_.send(command)) {
        return false;
    }
    std::optional<std::string_view> answer;
    do {
        wait_until_readable(socket_.descriptor(), reply_time_limit_ms);
        answer = receive(socket_);
    } while (answer && is_event(*answer));
    return answer && !answer->empty() && !answer->starts_with("FAIL");
}

bool BareControl::await_event(std::string_view text) const {
    while (true) {
        const auto event = receive(socket_);
        if (!event && errno != EAGAIN) {
            return false;
        }
        if (!event) {
            wait_until_readable(socket_.descriptor(), milliseconds_to_next_second());
        } else if (event->find(text) != std::string_view::npos) {
            return true;
        }
    }
}

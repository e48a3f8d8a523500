// SPDX-License-Identifier: Apache-2.0
#include "bare_control.hpp"

#include "control_socket.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace {

constexpr int reply_time_limit_ms = 10'000;

void wait_until_readable(int descriptor, int milliseconds) {
    pollfd waiting{descriptor, POLLIN, 0};
    poll(&waiting, 1, milliseconds);
}

int milliseconds_to_next_second() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return 1000 - static_cast<int>(now.tv_nsec / 1'000'000);
}

} // namespace

BareControl::BareControl(std::string_view server, int number)
    : own_("/tmp/bare-control-" + std::to_string(getpid()) + "-" + std::to_string(number)),
      descriptor_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    const auto local = address_of(own_);
    const auto remote = address_of(server);
    if (!local || !remote ||
        bind(descriptor_, reinterpret_cast<const sockaddr*>(&*local), sizeof(*local)) != 0 ||
        connect(descriptor_, reinterpret_cast<const sockaddr*>(&*remote), sizeof(*remote)) != 0) {
        std::perror("control socket");
    }
}

BareControl::~BareControl() {
    unlink(own_.c_str());
    close(descriptor_);
}

bool BareControl::request(std::string_view command) const {
    static std::array<char, longest_message> answer;
    if (send(descriptor_, command.data(), command.size(), 0) < 0) {
        return false;
    }
    ssize_t length = 0;
    do {
        wait_until_readable(descriptor_, reply_time_limit_ms);
        length = recv(descriptor_, answer.data(), answer.size(), 0);
    } while (length > 0 && answer[0] == '<');
    return length > 0 &&
           !std::string_view(answer.data(), static_cast<std::size_t>(length)).starts_with("FAIL");
}

bool BareControl::await_event(std::string_view text) const {
    static std::array<char, longest_message> event;
    while (true) {
        const ssize_t length = recv(descriptor_, event.data(), event.size(), 0);
        if (length < 0 && errno != EAGAIN) {
            return false;
        }
        if (length < 0) {
            wait_until_readable(descriptor_, milliseconds_to_next_second());
        } else if (std::string_view(event.data(), static_cast<std::size_t>(length)).find(text) !=
                   std::string_view::npos) {
            return true;
        }
    }
}

// SPDX-License-Identifier: Apache-2.0
#include "supplicant/presence.hpp"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

namespace bench {

namespace {

constexpr std::array<const char*, 2> interfaces{"wlan0", "p2p0"};

} // namespace

Presence::Presence(std::string folder) : folder_(std::move(folder)) {}

void Presence::come() {
    mkdir(folder_.c_str(), 0755);
    for (std::size_t index = 0; index < servers_.size(); ++index) {
        const std::string path = folder_ + "/" + interfaces[index];
        if (!servers_[index].is_open() && !servers_[index].open(path)) {
            std::perror(path.c_str());
            _exit(1);
        }
    }
}

void Presence::die() {
    for (ControlServer& server : servers_) {
        server.close();
    }
}

void Presence::listen(
    Microseconds longest,
    const std::function<void(const ControlServer& server, const Command& command)>& take) {
    std::array<pollfd, 2> waiting{};
    for (std::size_t index = 0; index < waiting.size(); ++index) {
        waiting[index] = {asleep_ ? -1 : servers_[index].fd(), POLLIN, 0};
    }
    timespec pause{};
    pause.tv_sec = static_cast<time_t>(longest / 1'000'000);
    pause.tv_nsec = static_cast<long>(longest % 1'000'000) * 1000;
    ppoll(waiting.data(), waiting.size(), longest < 0 ? nullptr : &pause, nullptr);
    for (std::size_t index = 0; index < waiting.size(); ++index) {
        const bool ready = (waiting[index].revents & POLLIN) != 0;
        if (const auto command = ready ? servers_[index].receive() : std::nullopt) {
            take(servers_[index], *command);
        }
    }
}

} // namespace bench

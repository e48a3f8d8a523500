// SPDX-License-Identifier: Apache-2.0
#include "counterpart.hpp"

#include "common/run_config.hpp"
#include "measure.hpp"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace perf {

namespace {

constexpr std::string_view event = "<3>CTRL-EVENT-BSS-ADDED 17 02:00:00:00:01:00";

constexpr unsigned pause_before_single_event_us = 3000;

struct Peer {
    sockaddr_un address{};
    socklen_t length = sizeof(sockaddr_un);
};

void send_to(int socket, const Peer& peer, std::string_view text) {
    sendto(socket, text.data(), text.size(), 0, reinterpret_cast<const sockaddr*>(&peer.address),
           peer.length);
}

class Server {
public:
    explicit Server(int socket) : socket_(socket) {}

    [[noreturn]] void serve() {
        std::array<char, 4096> buffer{};
        while (true) {
            Peer peer;
            const ssize_t length =
                recvfrom(socket_, buffer.data(), buffer.size(), 0,
                         reinterpret_cast<sockaddr*>(&peer.address), &peer.length);
            if (length < 0) {
                _exit(1);
            }
            answer(peer, std::string(buffer.data(), static_cast<std::size_t>(length)));
        }
    }

private:
    void answer(const Peer& peer, const std::string& command) {
        if (command == "ATTACH") {
            attached_ = peer;
        }
        if (command == "DELAY") {
            send_to(socket_, peer, std::to_string((now() - last_event_) * 1e6));
            return;
        }
        send_to(socket_, peer, "OK\n");
        if (command.starts_with("EVENT ")) {
            send_events(std::stoi(command.substr(6)));
        }
    }

    void send_events(int count) {
        if (count == 1) {
            usleep(pause_before_single_event_us);
        }
        for (int sent = 0; sent < count; ++sent) {
            last_event_ = now();
            send_to(socket_, attached_, event);
        }
    }

    int socket_;
    Peer attached_;
    double last_event_ = 0;
};

int listen_in(const std::string& folder) {
    const int server = socket(AF_UNIX, SOCK_DGRAM, 0);
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    std::snprintf(name.sun_path, sizeof(name.sun_path), "%s/wlan0", folder.c_str());
    if (bind(server, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) != 0) {
        std::perror("bind");
        std::exit(1);
    }
    return server;
}

wivex::RunConfig configuration_for(const std::string& folder) {
    wivex::RunConfig config;
    config.ctrl_iface = folder;
    config.interface_name = "wlan0";
    return config;
}

} // namespace

Counterpart::Counterpart(const std::string& folder) {
    const int server = listen_in(folder);
    process_ = fork();
    if (process_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        Server(server).serve();
    }
    close(server);
}

Counterpart::~Counterpart() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
}

MeasuredSession::MeasuredSession() : session_(configuration_for(folder_.path())) {
    if (session_.isInvalid()) {
        std::puts("no session");
        std::exit(1);
    }
}

} // namespace perf

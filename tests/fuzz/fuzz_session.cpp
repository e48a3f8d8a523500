// SPDX-License-Identifier: Apache-2.0
#include "fuzz_session.hpp"

#include "common/process_state.hpp"
#include "ctrl/wpa_ctrl.hpp"

#include <dirent.h>
#include <dlfcn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>

// Opening a session clears /tmp of client sockets, those of targets that run side by side too: here
// it finds nothing there.
extern "C" DIR* opendir(const char* path) {
    using Open = DIR* (*)(const char*);
    static const auto open_folder = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "opendir"));
    return std::string_view(path) == "/tmp" ? nullptr : open_folder(path);
}

namespace fuzz {

namespace {

// More than any operation under test sends commands.
constexpr int spare_replies = 8;

class Server {
public:
    Server() {
        if (mkdtemp(folder_.data()) == nullptr) {
            std::abort();
        }
        socket_ = socket(AF_UNIX, SOCK_DGRAM, 0);
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::snprintf(name.sun_path, sizeof(name.sun_path), "%s/wlan0", folder_.c_str());
        if (bind(socket_, reinterpret_cast<const sockaddr*>(&name), sizeof(name)) != 0) {
            std::abort();
        }
    }

    const std::string& folder() const {
        return folder_;
    }

    // Answers the one command that opening a session sends.
    void answer_attach() const {
        std::array<char, 64> command{};
        sockaddr_un peer{};
        socklen_t length = sizeof(peer);
        if (recvfrom(socket_, command.data(), command.size(), 0, reinterpret_cast<sockaddr*>(&peer),
                     &length) > 0) {
            send_to(peer, "OK\n");
        }
    }

    void send_to(const sockaddr_un& peer, std::string_view text) const {
        sendto(socket_, text.data(), text.size(), MSG_DONTWAIT,
               reinterpret_cast<const sockaddr*>(&peer), sizeof(peer));
    }

    void drain() const {
        char byte = 0;
        while (recv(socket_, &byte, 1, MSG_DONTWAIT) >= 0) {
        }
    }

private:
    std::string folder_ = "/tmp/wivex-fuzz-XXXXXX";
    int socket_ = -1;
};

Server& server() {
    static Server instance;
    return instance;
}

void drain_connection(wivex::wpa_ctrl& connection) {
    char byte = 0;
    std::size_t length = 1;
    while (wivex::wpa_ctrl_recv(connection, &byte, length) == 0) {
        length = 1;
    }
}

wivex::RunConfig config() {
    wivex::RunConfig config;
    config.ctrl_iface = server().folder();
    config.interface_name = "wlan0";
    return config;
}

} // namespace

wivex::SupplicantSession& session() {
    static std::thread opener([] { server().answer_attach(); });
    static wivex::SupplicantSession instance(config());
    if (opener.joinable()) {
        opener.join();
    }
    if (instance.isInvalid()) {
        std::abort();
    }
    return instance;
}

void queue_reply(std::string_view reply) {
    server().send_to(wivex::command_connection->local, reply);
}

void queue_event(std::string_view message) {
    server().send_to(wivex::event_connection->local, message);
}

void queue_replies_for_all(std::string_view reply) {
    queue_reply(reply);
    for (int spare = 0; spare < spare_replies; ++spare) {
        queue_reply("OK\n");
    }
}

void drain() {
    server().drain();
    drain_connection(*wivex::command_connection);
    drain_connection(*wivex::event_connection);
}

} // namespace fuzz

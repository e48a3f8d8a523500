// SPDX-License-Identifier: Apache-2.0
// silent-supplicant SOCKET: a control socket on which every command is answered "OK" and no event
// is ever sent, so that whoever awaits one does so for good.
#include "control_socket.hpp"

#include <sys/socket.h>

#include <array>
#include <cstdio>
#include <string_view>

namespace {

constexpr std::string_view answer = "OK\n";

} // namespace

int main(int argc, char** argv) {
    const auto own = address_of(argc == 2 ? argv[1] : "");
    const int server = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (argc != 2 || !own ||
        bind(server, reinterpret_cast<const sockaddr*>(&*own), sizeof(*own)) != 0) {
        std::perror("silent-supplicant");
        return 1;
    }
    while (true) {
        std::array<char, longest_message> command{};
        sockaddr_un client{};
        socklen_t length = sizeof(client);
        if (recvfrom(server, command.data(), command.size(), 0,
                     reinterpret_cast<sockaddr*>(&client), &length) < 0) {
            return 1;
        }
        sendto(server, answer.data(), answer.size(), 0, reinterpret_cast<const sockaddr*>(&client),
               length);
    }
}

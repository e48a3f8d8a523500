// SPDX-License-Identifier: Apache-2.0
// go-between SOCKET SUPPLICANT: serve the path SOCKET as the supplicant's own control socket at the
// path SUPPLICANT would be served, for clients that know one command more than this supplicant:
//
//     P2P_GROUP_ADD ssid=NAME passphrase=PHRASE
//
// It becomes a stored network with that name and pass phrase and a group started from it; the
// client gets the reply of the first step that fails, or of the last. All else, replies and events
// included, passes unchanged. Every translated command is printed. Runs until it is killed.
#include "control_socket.hpp"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::chrono::seconds reply_time_limit{10};

struct Group {
    std::string name;
    std::string pass_phrase;
};

// Both values may hold blanks.
std::optional<Group> group_of(std::string_view command) {
    constexpr std::string_view first = "P2P_GROUP_ADD ssid=";
    constexpr std::string_view second = " passphrase=";
    const auto middle = command.rfind(second);
    if (!command.starts_with(first) || middle == std::string_view::npos || middle < first.size()) {
        return std::nullopt;
    }
    return Group{std::string(command.substr(first.size(), middle - first.size())),
                 std::string(command.substr(middle + second.size()))};
}

// The form for a name of any bytes.
std::string hexadecimal(std::string_view text) {
    std::ostringstream digits;
    digits << std::hex << std::setfill('0');
    for (const char byte : text) {
        digits << std::setw(2) << static_cast<int>(static_cast<unsigned char>(byte));
    }
    return digits.str();
}

// One client, as a connection of its own to the supplicant.
class Client {
public:
    Client(int served, const sockaddr_un& address, socklen_t length)
        : served_(served), address_(address), length_(length) {}

    bool open(const std::string& supplicant, const std::string& own) {
        return supplicant_.open(supplicant, own);
    }
    bool is_at(const sockaddr_un& address, socklen_t length) const {
        return length == length_ && std::memcmp(&address, &address_, length) == 0;
    }
    int descriptor() const {
        return supplicant_.descriptor();
    }
    // False when the supplicant or the client is gone.
    bool pass_command(std::string_view command);
    bool pass_answer();

private:
    bool tell(std::string_view message) const {
        return sendto(served_, message.data(), message.size(), 0,
                      reinterpret_cast<const sockaddr*>(&address_), length_) >= 0;
    }
    std::string request(const std::string& command);
    std::string start_group(const Group& group);

    ControlSocket supplicant_;
    int served_;
    sockaddr_un address_;
    socklen_t length_;
};

bool Client::pass_command(std::string_view command) {
    if (const auto group = group_of(command)) {
        return tell(start_group(*group));
    }
    return supplicant_.send(command);
}

bool Client::pass_answer() {
    const auto message = supplicant_.receive(Clock::now() + reply_time_limit);
    return message && tell(*message);
}

// Events that come before the reply go on to the client at once.
std::string Client::request(const std::string& command) {
    std::string reply = "FAIL\n";
    if (supplicant_.send(command)) {
        const auto deadline = Clock::now() + reply_time_limit;
        while (const auto message = supplicant_.receive(deadline)) {
            if (!is_event(*message)) {
                reply = *message;
                break;
            }
            tell(*message);
        }
    }
    std::cout << command << ": " << reply << (reply.ends_with('\n') ? "" : "\n") << std::flush;
    return reply;
}

std::string Client::start_group(const Group& group) {
    std::string id = request("ADD_NETWORK");
    if (id.starts_with("FAIL")) {
        return id;
    }
    id.erase(id.find_last_not_of('\n') + 1);
    // A network of mode 3 is a group that this device owns, one that is disabled by 2 a stored one.
    const std::array<std::string, 7> settings{"ssid " + hexadecimal(group.name),
                                              "psk \"" + group.pass_phrase + "\"",
                                              "key_mgmt WPA-PSK",
                                              "proto RSN",
                                              "pairwise CCMP",
                                              "mode 3",
                                              "disabled 2"};
    const std::string set = "SET_NETWORK " + id + " ";
    for (const std::string& setting : settings) {
        if (std::string reply = request(set + setting); reply.starts_with("FAIL")) {
            return reply;
        }
    }
    return request("P2P_GROUP_ADD persistent=" + id);
}

// The served socket and all that have written to it.
class GoBetween {
public:
    GoBetween(int served, std::string supplicant)
        : served_(served), supplicant_(std::move(supplicant)) {}

    // Waits for whatever comes next and passes it on.
    void pass_on();

private:
    void pass_command();
    Client* client_at(const sockaddr_un& address, socklen_t length);
    void forget(const Client* client);

    int served_;
    std::string supplicant_;
    std::vector<std::unique_ptr<Client>> clients_;
    int counter_ = 0;
};

void GoBetween::pass_on() {
    std::vector<pollfd> waiting{{served_, POLLIN, 0}};
    for (const auto& client : clients_) {
        waiting.push_back({client->descriptor(), POLLIN, 0});
    }
    if (poll(waiting.data(), waiting.size(), -1) <= 0) {
        return;
    }
    std::vector<const Client*> gone;
    for (std::size_t i = 0; i < clients_.size(); ++i) {
        if (waiting[i + 1].revents != 0 && !clients_[i]->pass_answer()) {
            gone.push_back(clients_[i].get());
        }
    }
    for (const Client* client : gone) {
        forget(client);
    }
    if (waiting[0].revents != 0) {
        pass_command();
    }
}

void GoBetween::pass_command() {
    std::array<char, longest_message> command{};
    sockaddr_un address{};
    socklen_t length = sizeof(address);
    const ssize_t size = recvfrom(served_, command.data(), command.size(), 0,
                                  reinterpret_cast<sockaddr*>(&address), &length);
    if (size < 0) {
        return;
    }
    Client* const client = client_at(address, length);
    if (client != nullptr &&
        !client->pass_command(std::string_view(command.data(), static_cast<std::size_t>(size)))) {
        forget(client);
    }
}

Client* GoBetween::client_at(const sockaddr_un& address, socklen_t length) {
    for (const auto& client : clients_) {
        if (client->is_at(address, length)) {
            return client.get();
        }
    }
    auto client = std::make_unique<Client>(served_, address, length);
    const std::string own =
        "/tmp/go-between-" + std::to_string(getpid()) + "-" + std::to_string(++counter_);
    if (!client->open(supplicant_, own)) {
        std::cerr << "go-between: no connection to " << supplicant_ << std::endl;
        return nullptr;
    }
    return clients_.emplace_back(std::move(client)).get();
}

void GoBetween::forget(const Client* client) {
    std::erase_if(clients_, [client](const auto& other) { return other.get() == client; });
}

// A descriptor, or -1.
int serve(std::string_view path) {
    const auto address = address_of(path);
    const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (!address || descriptor < 0 ||
        bind(descriptor, reinterpret_cast<const sockaddr*>(&*address), sizeof(*address)) != 0) {
        return -1;
    }
    return descriptor;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: go-between SOCKET SUPPLICANT" << std::endl;
        return 1;
    }
    const int served = serve(argv[1]);
    if (served < 0) {
        std::cerr << "go-between: cannot serve " << argv[1] << std::endl;
        return 1;
    }
    GoBetween go_between(served, argv[2]);
    for (;;) {
        go_between.pass_on();
    }
}

// SPDX-License-Identifier: Apache-2.0
#include "world/interfaces.hpp"

#include "world/namespaces.hpp"

#include <arpa/inet.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace bench {

namespace {

class RequestSocket {
public:
    RequestSocket() : fd_(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}
    ~RequestSocket() {
        close(fd_);
    }
    RequestSocket(const RequestSocket&) = delete;
    RequestSocket& operator=(const RequestSocket&) = delete;

    bool request(unsigned long number, ifreq& message) const {
        return ioctl(fd_, number, &message) == 0;
    }

private:
    int fd_;
};

ifreq message_for(const std::string& interface) {
    ifreq message{};
    std::snprintf(message.ifr_name, sizeof(message.ifr_name), "%s", interface.c_str());
    return message;
}

bool put_address(unsigned long number, const std::string& interface, const std::string& address) {
    ifreq message = message_for(interface);
    sockaddr_in value{};
    value.sin_family = AF_INET;
    inet_pton(AF_INET, address.c_str(), &value.sin_addr);
    std::memcpy(&message.ifr_addr, &value, sizeof(value));
    return RequestSocket().request(number, message);
}

} // namespace

bool connect_worlds(pid_t device, pid_t access_point) {
    return run_quietly("ip link add wlan0 netns " + std::to_string(device) +
                       " type veth peer name ap0 netns " + std::to_string(access_point)) == 0;
}

bool bring_up(const std::string& interface) {
    const RequestSocket socket;
    ifreq message = message_for(interface);
    if (!socket.request(SIOCGIFFLAGS, message)) {
        return false;
    }
    message.ifr_flags = static_cast<short>(message.ifr_flags | IFF_UP);
    return socket.request(SIOCSIFFLAGS, message);
}

bool set_address(const std::string& interface, const std::string& address) {
    return put_address(SIOCSIFADDR, interface, address) &&
           put_address(SIOCSIFNETMASK, interface, "255.255.255.0") && bring_up(interface);
}

} // namespace bench

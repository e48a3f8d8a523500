// SPDX-License-Identifier: Apache-2.0
#include "kernel/netlink_sockets.hpp"

#include "kernel/preloaded.hpp"
#include "kernel/simulated_nl80211.hpp"
#include "language/conventions.hpp"

#include <fcntl.h>
#include <linux/genetlink.h>
#include <linux/nl80211.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench {

namespace {

constexpr int buffer_size = 1 << 20;

SimulatedNl80211& kernel() {
    static SimulatedNl80211 instance(played_scenario().air);
    return instance;
}

std::map<int, KernelEnd>& kernel_ends() {
    static std::map<int, KernelEnd> ends;
    return ends;
}

bool is_notification(const Octets& datagram) {
    return reinterpret_cast<const nlmsghdr*>(datagram.data())->nlmsg_seq == 0;
}

// Notifications reach only who has joined their group.
void send_all(const KernelEnd& end, const std::vector<Octets>& datagrams) {
    for (const Octets& datagram : datagrams) {
        if (end.member || !is_notification(datagram)) {
            send(end.fd, datagram.data(), datagram.size(), MSG_NOSIGNAL);
        }
    }
}

// A process of its own waits for the end of the scan; its parent ends at once, so that the tool has
// no child that it does not know.
void send_later(const KernelEnd& end, const std::vector<Octets>& datagrams) {
    if (kernel().scan_ms() == 0) {
        send_all(end, datagrams);
        return;
    }
    const pid_t middle = fork();
    if (middle == 0) {
        if (fork() == 0) {
            pause_ms(kernel().scan_ms());
            send_all(end, datagrams);
        }
        _exit(0);
    }
    waitpid(middle, nullptr, 0);
}

void log(const nlmsghdr& request) {
    std::FILE* const file = std::fopen((std::string(log_folder) + "/air.log").c_str(), "ae");
    if (file == nullptr) {
        return;
    }
    std::fprintf(file, "type %#x flags %#x:", static_cast<unsigned>(request.nlmsg_type),
                 static_cast<unsigned>(request.nlmsg_flags));
    const auto* const payload = static_cast<const std::uint8_t*>(NLMSG_DATA(&request));
    for (std::size_t at = 0; at < request.nlmsg_len - sizeof(request); ++at) {
        std::fprintf(file, " %02x", static_cast<unsigned>(payload[at]));
    }
    std::fprintf(file, "\n");
    std::fclose(file);
}

} // namespace

KernelEnd* kernel_end_of(int fd) {
    const auto found = kernel_ends().find(fd);
    return found == kernel_ends().end() ? nullptr : &found->second;
}

void close_really(int fd) {
    static const auto next = next_function<int (*)(int)>("close");
    next(fd);
}

void leave_kernel(int fd) {
    const KernelEnd* const end = kernel_end_of(fd);
    if (end != nullptr) {
        close_really(end->fd);
        kernel_ends().erase(fd);
    }
}

bool connect_to_kernel(int fd, int flags) {
    std::array<int, 2> ends{-1, -1};
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | flags, 0, ends.data()) != 0) {
        return false;
    }
    const bool connected = dup3(ends[0], fd, (flags & SOCK_CLOEXEC) != 0 ? O_CLOEXEC : 0) == fd;
    close_really(ends[0]);
    for (const int end : {fd, ends[1]}) {
        setsockopt(end, SOL_SOCKET, SO_SNDBUF, &buffer_size, sizeof(buffer_size));
    }
    kernel_ends().insert_or_assign(fd, KernelEnd{ends[1]});
    return connected;
}

void take_message(KernelEnd& end) {
    std::array<std::uint8_t, 4096> bytes{};
    const ssize_t length = recv(end.fd, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (length < static_cast<ssize_t>(sizeof(nlmsghdr))) {
        return;
    }
    const auto& request = *reinterpret_cast<const nlmsghdr*>(bytes.data());
    log(request);
    const NetlinkAnswer answer = kernel().answer(request);
    end.overflow = answer.overflow;
    end.lost = answer.lost;
    send_all(end, answer.now);
    if (!answer.later.empty()) {
        send_later(end, answer.later);
    }
}

bool ends_scan(int fd) {
    std::array<std::uint8_t, sizeof(nlmsghdr) + sizeof(genlmsghdr)> bytes{};
    if (recv(fd, bytes.data(), bytes.size(), MSG_PEEK | MSG_DONTWAIT) <
        static_cast<ssize_t>(bytes.size())) {
        return false;
    }
    const auto& header = *reinterpret_cast<const nlmsghdr*>(bytes.data());
    return header.nlmsg_seq == 0 &&
           static_cast<const genlmsghdr*>(NLMSG_DATA(&header))->cmd == NL80211_CMD_NEW_SCAN_RESULTS;
}

} // namespace bench

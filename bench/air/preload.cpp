// SPDX-License-Identifier: Apache-2.0
// The simulated nl80211: a preloaded library that puts itself in the place of the tool's generic
// netlink socket. The tool's own library speaks to it as to the kernel.

#include "air/simulated_nl80211.hpp"
#include "scenario.hpp"
#include "text.hpp"

#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>

namespace bench {

namespace {

constexpr const char* scenario_path = "/bench/scenario";
constexpr const char* log_path = "/bench/log/air.log";
constexpr int buffer_size = 1 << 20;

template <typename Function>
Function real(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

SimulatedNl80211 load() {
    std::string problem;
    const auto scenario =
        parse_scenario(read_file(scenario_path).value_or(""), scenario_path, problem);
    if (!scenario) {
        std::fprintf(stderr, "%s\n", problem.c_str());
        std::_Exit(125);
    }
    return SimulatedNl80211(scenario->air);
}

SimulatedNl80211& kernel() {
    static SimulatedNl80211 instance = load();
    return instance;
}

/// The kernel's end of a socket of the tool.
struct KernelEnd {
    int fd = -1;
    bool overflow = false;
    bool lost = false;
    /// Whether the socket has joined a group, and is told of what happens.
    bool member = false;
};

std::map<int, KernelEnd>& kernel_ends() {
    static std::map<int, KernelEnd> ends;
    return ends;
}

KernelEnd* kernel_end_of(int fd) {
    const auto found = kernel_ends().find(fd);
    return found == kernel_ends().end() ? nullptr : &found->second;
}

void close_really(int fd) {
    static const auto next = real<int (*)(int)>("close");
    next(fd);
}

// Closes the end that belongs to a socket of the tool.
void leave_kernel(int fd) {
    const KernelEnd* const end = kernel_end_of(fd);
    if (end != nullptr) {
        close_really(end->fd);
        kernel_ends().erase(fd);
    }
}

// Puts one end of a pair in the place of the socket that the tool was given.
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

void pause_ms(int milliseconds) {
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
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
    std::FILE* const file = std::fopen(log_path, "ae");
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

// Reads what the tool has sent to the kernel's end, and answers it.
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

// The socket of a pair takes no address.
msghdr without_address(const msghdr& message) {
    msghdr plain = message;
    plain.msg_name = nullptr;
    plain.msg_namelen = 0;
    return plain;
}

// Whether the next message is the notification that ends a scan.
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

// Messages come from the kernel, whose port is 0.
void set_sender(msghdr& message) {
    if (message.msg_name != nullptr && message.msg_namelen >= sizeof(sockaddr_nl)) {
        auto& sender = *static_cast<sockaddr_nl*>(message.msg_name);
        sender = {};
        sender.nl_family = AF_NETLINK;
        message.msg_namelen = sizeof(sockaddr_nl);
    }
}

} // namespace

} // namespace bench

// Each call of the tool is exactly one call of the system under the same name, so that a tracer
// finds the tool's own calls, and a call that it lets fail fails for the tool.

extern "C" int socket(int domain, int type, int protocol) noexcept {
    static const auto next = bench::real<int (*)(int, int, int)>("socket");
    if (domain != AF_NETLINK || protocol != NETLINK_GENERIC) {
        return next(domain, type, protocol);
    }
    constexpr int flags = SOCK_CLOEXEC | SOCK_NONBLOCK;
    const int fd = next(AF_UNIX, SOCK_SEQPACKET | (type & flags), 0);
    if (fd >= 0 && !bench::connect_to_kernel(fd, type & flags)) {
        bench::close_really(fd);
        return -1;
    }
    return fd;
}

extern "C" int bind(int fd, const sockaddr* addr, socklen_t len) noexcept {
    static const auto next = bench::real<int (*)(int, const sockaddr*, socklen_t)>("bind");
    if (bench::kernel_end_of(fd) == nullptr) {
        return next(fd, addr, len);
    }
    const sockaddr any_name{AF_UNIX, {}};
    return next(fd, &any_name, sizeof(any_name.sa_family));
}

extern "C" int getsockname(int fd, sockaddr* addr, socklen_t* len) noexcept {
    static const auto next = bench::real<int (*)(int, sockaddr*, socklen_t*)>("getsockname");
    const int result = next(fd, addr, len);
    if (result == 0 && bench::kernel_end_of(fd) != nullptr) {
        auto& name = *reinterpret_cast<sockaddr_nl*>(addr);
        name = {};
        name.nl_family = AF_NETLINK;
        name.nl_pid = static_cast<std::uint32_t>(getpid());
        *len = sizeof(name);
    }
    return result;
}

extern "C" int setsockopt(int fd, int level, int optname, const void* optval,
                          socklen_t optlen) noexcept {
    static const auto next =
        bench::real<int (*)(int, int, int, const void*, socklen_t)>("setsockopt");
    const int result = next(fd, level, optname, optval, optlen);
    bench::KernelEnd* const end = bench::kernel_end_of(fd);
    // The pair knows no options of netlink.
    const bool unknown = result != 0 && (errno == EOPNOTSUPP || errno == ENOPROTOOPT);
    if (end == nullptr || level != SOL_NETLINK || !unknown) {
        return result;
    }
    if (optname == NETLINK_ADD_MEMBERSHIP || optname == NETLINK_DROP_MEMBERSHIP) {
        end->member = optname == NETLINK_ADD_MEMBERSHIP;
    }
    return 0;
}

extern "C" ssize_t sendmsg(int fd, const msghdr* message, int flags) {
    static const auto next = bench::real<ssize_t (*)(int, const msghdr*, int)>("sendmsg");
    bench::KernelEnd* const end = bench::kernel_end_of(fd);
    if (end == nullptr) {
        return next(fd, message, flags);
    }
    const msghdr plain = bench::without_address(*message);
    const ssize_t length = next(fd, &plain, flags);
    if (length >= 0) {
        bench::take_message(*end);
    }
    return length;
}

extern "C" ssize_t recvmsg(int fd, msghdr* message, int flags) {
    static const auto next = bench::real<ssize_t (*)(int, msghdr*, int)>("recvmsg");
    bench::KernelEnd* const end = bench::kernel_end_of(fd);
    if (end == nullptr) {
        return next(fd, message, flags);
    }
    if (end->lost || (end->overflow && bench::ends_scan(fd))) {
        bool& told = end->lost ? end->lost : end->overflow;
        told = false;
        errno = ENOBUFS;
        return -1;
    }
    const socklen_t name_length = message->msg_namelen;
    const ssize_t length = next(fd, message, flags);
    message->msg_namelen = name_length;
    bench::set_sender(*message);
    return length;
}

extern "C" int close(int fd) {
    static const auto next = bench::real<int (*)(int)>("close");
    bench::leave_kernel(fd);
    return next(fd);
}

// The simulated nl80211: a preloaded library that puts itself in the place of the tool's generic
// netlink socket. The tool's own library speaks to it as to the kernel.

#include "air/simulated_nl80211.hpp"
#include "scenario.hpp"
#include "text.hpp"

#include <dlfcn.h>
#include <errno.h>
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
};

std::map<int, KernelEnd>& kernel_ends() {
    static std::map<int, KernelEnd> ends;
    return ends;
}

KernelEnd* kernel_end_of(int fd) {
    const auto found = kernel_ends().find(fd);
    return found == kernel_ends().end() ? nullptr : &found->second;
}

int open_socket(int type) {
    std::array<int, 2> ends{-1, -1};
    const int flags = type & (SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | flags, 0, ends.data()) != 0) {
        return -1;
    }
    for (const int end : ends) {
        setsockopt(end, SOL_SOCKET, SO_SNDBUF, &buffer_size, sizeof(buffer_size));
    }
    kernel_ends()[ends[0]] = {ends[1], false};
    return ends[0];
}

void send_all(int fd, const std::vector<Octets>& datagrams) {
    for (const Octets& datagram : datagrams) {
        send(fd, datagram.data(), datagram.size(), MSG_NOSIGNAL);
    }
}

void pause_ms(int milliseconds) {
    timespec left{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

// A process of its own waits for the end of the scan; its parent ends at once, so that the tool has
// no child that it does not know.
void send_later(int fd, const std::vector<Octets>& datagrams) {
    if (kernel().scan_ms() == 0) {
        send_all(fd, datagrams);
        return;
    }
    const pid_t middle = fork();
    if (middle == 0) {
        if (fork() == 0) {
            pause_ms(kernel().scan_ms());
            send_all(fd, datagrams);
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

ssize_t take_message(KernelEnd& end, const msghdr& message) {
    const iovec& part = message.msg_iov[0];
    const auto& request = *static_cast<const nlmsghdr*>(part.iov_base);
    log(request);
    const NetlinkAnswer answer = kernel().answer(request);
    end.overflow = answer.overflow;
    send_all(end.fd, answer.now);
    if (!answer.later.empty()) {
        send_later(end.fd, answer.later);
    }
    return static_cast<ssize_t>(part.iov_len);
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

extern "C" int socket(int domain, int type, int protocol) noexcept {
    if (domain == AF_NETLINK && protocol == NETLINK_GENERIC) {
        return bench::open_socket(type);
    }
    static const auto next = bench::real<int (*)(int, int, int)>("socket");
    return next(domain, type, protocol);
}

extern "C" int bind(int fd, const sockaddr* addr, socklen_t len) noexcept {
    if (bench::kernel_end_of(fd) != nullptr) {
        return 0;
    }
    static const auto next = bench::real<int (*)(int, const sockaddr*, socklen_t)>("bind");
    return next(fd, addr, len);
}

extern "C" int getsockname(int fd, sockaddr* addr, socklen_t* len) noexcept {
    if (bench::kernel_end_of(fd) != nullptr) {
        auto& name = *reinterpret_cast<sockaddr_nl*>(addr);
        name = {};
        name.nl_family = AF_NETLINK;
        name.nl_pid = static_cast<std::uint32_t>(getpid());
        *len = sizeof(name);
        return 0;
    }
    static const auto next = bench::real<int (*)(int, sockaddr*, socklen_t*)>("getsockname");
    return next(fd, addr, len);
}

extern "C" int setsockopt(int fd, int level, int optname, const void* optval,
                          socklen_t optlen) noexcept {
    if (level == SOL_NETLINK && bench::kernel_end_of(fd) != nullptr) {
        return 0;
    }
    static const auto next =
        bench::real<int (*)(int, int, int, const void*, socklen_t)>("setsockopt");
    return next(fd, level, optname, optval, optlen);
}

extern "C" ssize_t sendmsg(int fd, const msghdr* message, int flags) {
    if (bench::KernelEnd* const end = bench::kernel_end_of(fd)) {
        return bench::take_message(*end, *message);
    }
    static const auto next = bench::real<ssize_t (*)(int, const msghdr*, int)>("sendmsg");
    return next(fd, message, flags);
}

extern "C" ssize_t recvmsg(int fd, msghdr* message, int flags) {
    static const auto next = bench::real<ssize_t (*)(int, msghdr*, int)>("recvmsg");
    bench::KernelEnd* const end = bench::kernel_end_of(fd);
    if (end == nullptr) {
        return next(fd, message, flags);
    }
    if (end->overflow && bench::ends_scan(fd)) {
        end->overflow = false;
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
    if (const bench::KernelEnd* const end = bench::kernel_end_of(fd)) {
        next(end->fd);
        bench::kernel_ends().erase(fd);
    }
    return next(fd);
}

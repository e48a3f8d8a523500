// SPDX-License-Identifier: Apache-2.0
// The simulated nl80211 as a library in the tool's process: the calls that it takes over. The
// tool's own netlink library speaks to it as to the kernel.

#include "kernel/netlink_sockets.hpp"
#include "kernel/preloaded.hpp"

#include <errno.h>
#include <linux/netlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>

namespace bench {

namespace {

// The socket of a pair takes no address.
msghdr without_address(const msghdr& message) {
    msghdr plain = message;
    plain.msg_name = nullptr;
    plain.msg_namelen = 0;
    return plain;
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
    static const auto next = bench::next_function<int (*)(int, int, int)>("socket");
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
    static const auto next = bench::next_function<int (*)(int, const sockaddr*, socklen_t)>("bind");
    if (bench::kernel_end_of(fd) == nullptr) {
        return next(fd, addr, len);
    }
    const sockaddr any_name{AF_UNIX, {}};
    return next(fd, &any_name, sizeof(any_name.sa_family));
}

extern "C" int getsockname(int fd, sockaddr* addr, socklen_t* len) noexcept {
    static const auto next =
        bench::next_function<int (*)(int, sockaddr*, socklen_t*)>("getsockname");
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
        bench::next_function<int (*)(int, int, int, const void*, socklen_t)>("setsockopt");
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
    static const auto next = bench::next_function<ssize_t (*)(int, const msghdr*, int)>("sendmsg");
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
    static const auto next = bench::next_function<ssize_t (*)(int, msghdr*, int)>("recvmsg");
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
    static const auto next = bench::next_function<int (*)(int)>("close");
    bench::leave_kernel(fd);
    return next(fd);
}

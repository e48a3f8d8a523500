// SPDX-License-Identifier: Apache-2.0
#include "error_numbers.hpp"

#include "text_parts.hpp"

#include <algorithm>
#include <map>
#include <string_view>

namespace faults {

namespace {

using bench_test::contains;
using Names = std::vector<std::string>;

const Names opening{"EINTR", "EMFILE", "ENFILE", "ENOMEM", "EACCES", "ENOENT", "EIO"};
const Names starting{"EAGAIN", "ENOMEM"};
const Names waiting{"EINTR", "ENOMEM"};
const Names looking{"ENOENT", "EACCES", "ENOMEM", "EIO"};
const Names removing{"ENOENT", "EACCES", "EROFS", "EIO"};

/// By the name of the call; what depends on its arguments is added below.
const std::map<std::string, Names, std::less<>>& usual_errors() {
    static const std::map<std::string, Names, std::less<>> errors{
        {"access", {"ENOENT", "EACCES", "ENOMEM", "EIO"}},
        {"bind", {"EADDRINUSE", "EACCES", "ENOENT", "ENOSPC", "ENOMEM"}},
        {"clock_nanosleep", {"EINTR"}},
        {"clone", starting},
        {"clone3", starting},
        {"connect", {"ECONNREFUSED", "ENOENT", "EACCES", "EAGAIN", "EINTR"}},
        {"dup", {"EMFILE"}},
        {"epoll_create1", {"EMFILE", "ENFILE", "ENOMEM"}},
        {"epoll_wait", {"EINTR"}},
        {"eventfd2", {"EMFILE", "ENFILE", "ENOMEM"}},
        {"faccessat2", {"ENOENT", "EACCES", "ENOMEM", "EIO"}},
        {"fork", starting},
        {"fstat", {"ENOMEM", "EIO"}},
        {"fsync", {"EIO", "ENOSPC", "EINTR"}},
        {"ftruncate", {"EIO", "EINTR"}},
        {"getdents64", {"EIO", "ENOENT"}},
        {"getrandom", {"EINTR", "EAGAIN"}},
        {"getsockname", {"ENOBUFS"}},
        {"getsockopt", {"ENOBUFS", "ENOPROTOOPT"}},
        {"ioctl", {"EINTR", "EIO", "ENOMEM", "EBUSY"}},
        {"lseek", {"ESPIPE"}},
        {"mmap", {"ENOMEM"}},
        {"mprotect", {"ENOMEM"}},
        {"mremap", {"ENOMEM"}},
        {"munmap", {"ENOMEM"}},
        {"nanosleep", {"EINTR"}},
        {"newfstatat", looking},
        {"open", opening},
        {"openat", opening},
        {"pipe2", {"EMFILE", "ENFILE", "ENOMEM"}},
        {"poll", waiting},
        {"ppoll", waiting},
        {"pselect6", waiting},
        {"read", {"EINTR", "EIO", "ENOMEM"}},
        {"recvfrom", {"EINTR", "EAGAIN", "ECONNREFUSED", "ENOMEM"}},
        {"recvmsg", {"EINTR", "EAGAIN", "ENOBUFS", "ENOMEM"}},
        {"rename", removing},
        {"rmdir", removing},
        {"select", waiting},
        {"sendmsg", {"EINTR", "EAGAIN", "ECONNREFUSED", "ENOBUFS", "ENOMEM"}},
        {"sendto", {"EINTR", "EAGAIN", "ECONNREFUSED", "ENOENT", "ENOBUFS", "ENOMEM", "EPIPE"}},
        {"setsockopt", {"ENOMEM", "EPERM", "ENOPROTOOPT"}},
        {"signalfd4", {"EMFILE", "ENFILE", "ENOMEM"}},
        {"socket", {"EMFILE", "ENFILE", "ENOMEM", "ENOBUFS", "EACCES"}},
        {"socketpair", {"EMFILE", "ENFILE", "ENOMEM"}},
        {"stat", looking},
        {"statx", looking},
        {"timer_create", {"EAGAIN", "ENOMEM"}},
        {"timerfd_create", {"EMFILE", "ENFILE", "ENOMEM"}},
        {"unlink", removing},
        {"unlinkat", removing},
        {"vfork", starting},
        {"wait4", {"EINTR", "ECHILD"}},
        {"waitid", {"EINTR", "ECHILD"}},
        {"write", {"EINTR", "EAGAIN", "EIO", "ENOSPC", "EPIPE"}},
        {"writev", {"EINTR", "EAGAIN", "EIO", "ENOSPC", "EPIPE"}}};
    return errors;
}

Names errors_of(const Call& call) {
    const auto usual = usual_errors().find(call.name);
    Names names = usual == usual_errors().end() ? Names{} : usual->second;
    if (contains(call.arguments, "O_CREAT")) {
        names.insert(names.end(), {"ENOSPC", "EROFS"});
    }
    if (call.name == "fcntl" && contains(call.arguments, "F_DUPFD")) {
        names = {"EMFILE"};
    }
    // A call that the tracer lets fail is not made, but a close that fails has closed: with a pipe
    // or a socket that would be another world.
    if (call.name == "close" && contains(call.arguments, "</")) {
        names = {"EINTR", "EIO", "ENOSPC"};
    }
    return names;
}

} // namespace

std::vector<Failure> failures_of(const Call& call) {
    // The kernel answers with the old end of the memory instead of a number.
    if (call.name == "brk") {
        return {"retval=0"};
    }
    std::vector<Failure> failures;
    for (const std::string& name : errors_of(call)) {
        failures.push_back("error=" + name);
    }
    return failures;
}

} // namespace faults

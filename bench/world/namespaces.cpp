// SPDX-License-Identifier: Apache-2.0
#include "world/namespaces.hpp"

#include "language/files.hpp"

#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace bench {

namespace {

constexpr unsigned long world_flags = CLONE_NEWNS | CLONE_NEWPID | CLONE_NEWNET | CLONE_NEWIPC;

bool map_to_root(const char* file, unsigned id) {
    return write_file(file, "0 " + std::to_string(id) + " 1\n");
}

} // namespace

bool become_root(std::string& problem) {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0) {
        return true;
    }
    if (unshare(CLONE_NEWUSER) != 0) {
        problem = std::string("this kernel gives an ordinary user no namespaces (") +
                  std::strerror(errno) + "); run as root";
        return false;
    }
    if (!write_file("/proc/self/setgroups", "deny") || !map_to_root("/proc/self/uid_map", user) ||
        !map_to_root("/proc/self/gid_map", group)) {
        problem = "cannot map the user into a namespace; run as root";
        return false;
    }
    return true;
}

pid_t start_world(const std::function<int()>& world) {
    const auto pid = static_cast<pid_t>(
        syscall(SYS_clone, world_flags | SIGCHLD, nullptr, nullptr, nullptr, nullptr));
    if (pid != 0) {
        return pid;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    _exit(world());
}

bool make_mounts_private() {
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

int run_quietly(const std::string& command) {
    const int status = std::system((command + " >/dev/null 2>&1 </dev/null").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace bench

// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"

#include "common/interrupts.hpp"
#include "scratch.hpp"

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>

namespace wivex::test_support {

int fork_child(const std::function<int()>& body) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::_exit(body());
    }
    return pid;
}

int end_of_child(int pid, milliseconds limit) {
    const Stopwatch watch;
    int status = 0;
    while (::waitpid(pid, &status, WNOHANG) == 0) {
        if (watch.elapsed() > limit) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, &status, 0);
            return -1;
        }
        std::this_thread::sleep_for(milliseconds(2));
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

namespace {

// Runs `body` in a child that has no rights, and that can have so many processes at first. A minute
// of the fast clock is three seconds.
int without_rights(rlim_t processes, const std::function<int()>& body) {
    const int child = fork_child([processes, &body] {
        const rlimit most{processes, processes};
        ::setrlimit(RLIMIT_NPROC, &most);
        if (::geteuid() == 0 && ::setuid(65534) != 0) {
            return 100;
        }
        return body();
    });
    return end_of_child(child, std::chrono::minutes(1));
}

} // namespace

int without_processes(const std::function<int()>& body) {
    return without_rights(0, body);
}

int until_no_more_processes(const std::function<int()>& body) {
    return without_rights(RLIM_INFINITY, [&body] {
        ::setenv("TESTED_PROCESS", std::to_string(::getpid()).c_str(), 1);
        return body();
    });
}

int with_empty_folder(const std::string& path, const std::function<int()>& body) {
    const int child = fork_child([&] {
        const bool provided = ::unshare(CLONE_NEWNS) == 0 &&
                              ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
                              ::mount("folder", path.c_str(), "tmpfs", 0, nullptr) == 0;
        return provided ? body() : no_own_folder;
    });
    return end_of_child(child, milliseconds(5000));
}

void exit_by_signal(int signal_number) {
    ::_exit(signal_number == SIGINT ? 50 : 60);
}

int end_of_interrupted(int signal_number, const std::function<void()>& body, void (*handler)(int),
                       milliseconds limit) {
    const Gate ready;
    const int child = fork_child([&] {
        install_interrupt_handler(handler);
        ready.open();
        body();
        return 1;
    });
    ready.wait();
    std::this_thread::sleep_for(milliseconds(300));
    ::kill(child, signal_number);
    return end_of_child(child, limit);
}

int end_under_the_handler(const std::function<int()>& body) {
    const int child = fork_child([&] {
        install_interrupt_handler(exit_by_signal);
        return body();
    });
    return end_of_child(child, milliseconds(2000));
}

} // namespace wivex::test_support

// SPDX-License-Identifier: Apache-2.0
#include "children.hpp"

#include "common/interrupts.hpp"
#include "scratch.hpp"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
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

int without_processes(const std::function<int()>& body) {
    const int child = fork_child([&body] {
        const rlimit none{0, 0};
        ::setrlimit(RLIMIT_NPROC, &none);
        if (::geteuid() == 0 && ::setuid(65534) != 0) {
            return 100;
        }
        return body();
    });
    return end_of_child(child, milliseconds(9000));
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

} // namespace wivex::test_support

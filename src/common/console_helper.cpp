// SPDX-License-Identifier: Apache-2.0
#include "common/console_helper.hpp"

#include "common/unique_fd.hpp"

#include <linux/magic.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>

namespace wivex::console_helper {

namespace {

constexpr std::array<int, 2> streams{STDOUT_FILENO, STDERR_FILENO};

// A message names its stream in the first byte.
using Message = std::array<char, 1 + longest_text>;

// The end of the run; lives as long as the process.
std::atomic<int> run_end{-1};
std::atomic<bool> in_flight{false};
std::array<std::atomic<bool>, 3> served{};

// Files in memory do not hang.
bool may_hang(int fd) {
    struct stat file {};
    struct statfs system {};
    if (fstat(fd, &file) != 0 || !S_ISREG(file.st_mode) || fstatfs(fd, &system) != 0) {
        return false;
    }
    const auto type = static_cast<std::uint32_t>(system.f_type);
    return type != TMPFS_MAGIC && type != RAMFS_MAGIC;
}

void write_whole(int fd, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(fd, text.data(), text.size());
        if (written < 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

// Ends with the run, also when that is killed. Keeps nothing open that a reader waits for.
[[noreturn]] void serve(int helper_end, pid_t run) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NAME, "wivex-console");
    close(STDIN_FILENO);
    for (const int fd : streams) {
        if (!serves(fd)) {
            close(fd);
        }
    }
    Message message{};
    ssize_t length{};
    while (getppid() == run && (length = recv(helper_end, message.data(), message.size(), 0)) > 0) {
        write_whole(message[0], {message.data() + 1, static_cast<std::size_t>(length) - 1});
        const char word = 0;
        ::send(helper_end, &word, sizeof(word), MSG_NOSIGNAL);
    }
    _exit(0);
}

void lose_helper() {
    for (const int fd : streams) {
        served.at(static_cast<std::size_t>(fd)) = false;
    }
    in_flight = false;
    UniqueFd(run_end.exchange(-1)).reset();
}

} // namespace

void start() {
    bool wanted = false;
    for (const int fd : streams) {
        served.at(static_cast<std::size_t>(fd)) = may_hang(fd);
        wanted = wanted || serves(fd);
    }
    std::array<int, 2> ends{};
    if (!wanted || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        lose_helper();
        return;
    }
    UniqueFd run(ends[0]);
    const UniqueFd helper(ends[1]);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        run.reset();
        serve(helper.get(), parent);
    }
    if (child < 0) {
        lose_helper();
        return;
    }
    run_end = run.release();
}

bool serves(int fd) {
    return served.at(static_cast<std::size_t>(fd));
}

bool busy() {
    return in_flight;
}

int descriptor() {
    return run_end;
}

void take_word() {
    char word = 0;
    const ssize_t length = recv(run_end, &word, sizeof(word), MSG_DONTWAIT);
    if (length == 0 || (length < 0 && errno != EAGAIN && errno != EINTR)) {
        lose_helper();
        return;
    }
    in_flight = length < 0;
}

bool send(int fd, std::string_view text) {
    Message message{};
    message[0] = static_cast<char>(fd);
    text.copy(message.data() + 1, longest_text);
    in_flight = true;
    if (::send(run_end, message.data(), text.size() + 1, MSG_NOSIGNAL) < 0) {
        lose_helper();
        return false;
    }
    return true;
}

} // namespace wivex::console_helper

// SPDX-License-Identifier: Apache-2.0
#include "program_answer.hpp"

#include "common/unique_fd.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <array>

namespace wivex::doctor {

namespace {

constexpr std::int64_t limit_ms = 3000;
constexpr std::size_t longest_answer = 1024;

std::int64_t now_ms() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

class SpawnActions {
public:
    SpawnActions() {
        posix_spawn_file_actions_init(&actions_);
    }
    ~SpawnActions() {
        posix_spawn_file_actions_destroy(&actions_);
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    posix_spawn_file_actions_t* get() {
        return &actions_;
    }

private:
    posix_spawn_file_actions_t actions_{};
};

pid_t start(const std::string& path, const char* word, int output) {
    SpawnActions actions;
    posix_spawn_file_actions_addopen(actions.get(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(actions.get(), output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(actions.get(), output, STDERR_FILENO);
    std::string name = path;
    std::string argument = word;
    std::array<char*, 3> words{name.data(), argument.data(), nullptr};
    pid_t child = -1;
    const int failure =
        posix_spawn(&child, path.c_str(), actions.get(), nullptr, words.data(), environ);
    return failure == 0 ? child : -1;
}

// False when the time is over before the output ends.
bool read_to_end(int fd, std::int64_t deadline, std::string& text) {
    while (true) {
        pollfd waited{fd, POLLIN, 0};
        const std::int64_t left = deadline - now_ms();
        if (left <= 0 || poll(&waited, 1, static_cast<int>(left)) <= 0) {
            return false;
        }
        std::array<char, 256> part{};
        const ssize_t count = read(fd, part.data(), part.size());
        if (count <= 0) {
            return count == 0;
        }
        if (text.size() < longest_answer) {
            text.append(part.data(), static_cast<std::size_t>(count));
        }
    }
}

// One that closed its output and goes on is ended too.
bool wait_in_time(pid_t child, std::int64_t deadline) {
    constexpr timespec pause{0, 10'000'000};
    while (waitpid(child, nullptr, WNOHANG) == 0) {
        if (now_ms() >= deadline) {
            return false;
        }
        nanosleep(&pause, nullptr);
    }
    return true;
}

} // namespace

ProgramAnswer ask_program(const std::string& path, const char* word) {
    ProgramAnswer answer;
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return answer;
    }
    const UniqueFd reader(ends[0]);
    UniqueFd writer(ends[1]);
    const pid_t child = start(path, word, writer.get());
    writer.reset();
    if (child < 0) {
        return answer;
    }
    const std::int64_t deadline = now_ms() + limit_ms;
    answer.ended =
        read_to_end(reader.get(), deadline, answer.text) && wait_in_time(child, deadline);
    if (!answer.ended) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    return answer;
}

} // namespace wivex::doctor

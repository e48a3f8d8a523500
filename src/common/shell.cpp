// SPDX-License-Identifier: Apache-2.0
#include "common/shell.hpp"

#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/signal_set.hpp"
#include "common/unique_fd.hpp"
#include "common/waiting.hpp"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <span>

namespace wivex {

namespace {

constexpr int exit_status_of_missing_shell = 127 << 8;

// Attributes of a child that must not inherit our held signals or an ignored SIGINT.
class SpawnAttributes {
public:
    SpawnAttributes()
        : initialised_(posix_spawnattr_init(&attributes_) == 0),
          usable_(initialised_ && take_defaults()) {}
    ~SpawnAttributes() {
        if (initialised_) {
            posix_spawnattr_destroy(&attributes_);
        }
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    /// Null when they could not be made: a child without them could never be interrupted.
    const posix_spawnattr_t* get() const {
        return usable_ ? &attributes_ : nullptr;
    }

private:
    bool take_defaults() {
        const sigset_t none = signal_set({});
        // SIGHUP stays as it was inherited: a run under nohup keeps its children too.
        const sigset_t defaults = signal_set({SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGCHLD, SIGALRM});
        return posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
               posix_spawnattr_setsigdefault(&attributes_, &defaults) == 0 &&
               posix_spawnattr_setflags(&attributes_,
                                        POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF) == 0;
    }

    posix_spawnattr_t attributes_{};
    bool initialised_;
    bool usable_;
};

// What a child does with its descriptors before it runs.
class SpawnActions {
public:
    SpawnActions() : usable_(posix_spawn_file_actions_init(&actions_) == 0) {}
    ~SpawnActions() {
        if (usable_) {
            posix_spawn_file_actions_destroy(&actions_);
        }
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    bool send_output_to(int fd) {
        return usable_ && posix_spawn_file_actions_adddup2(&actions_, fd, STDOUT_FILENO) == 0;
    }
    const posix_spawn_file_actions_t* get() const {
        return &actions_;
    }

private:
    posix_spawn_file_actions_t actions_{};
    bool usable_;
};

// Returns 0, or the error number when no child could be started.
int spawn_shell(const char* command, const posix_spawn_file_actions_t* actions, pid_t& child) {
    flush_out();
    std::array<char, 3> shell{"sh"};
    std::array<char, 3> option{"-c"};
    std::string text(command);
    const std::array<char*, 4> arguments{shell.data(), option.data(), text.data(), nullptr};
    const SpawnAttributes attributes;
    const int failure =
        attributes.get() == nullptr
            ? ENOMEM
            : posix_spawn(&child, "/bin/sh", actions, attributes.get(), arguments.data(), environ);
    if (failure != 0) {
        // A caller that tries again without end must stay interruptible.
        let_interrupts_in();
        errno = failure;
    }
    return failure;
}

std::string read_up_to(int fd, std::size_t limit) {
    std::string text(limit, '\0');
    std::size_t length = 0;
    while (length < limit) {
        const ssize_t count = wait_for_data(fd, std::span(text).subspan(length));
        if (count <= 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    text.resize(length);
    return text;
}

} // namespace

int run_shell(const char* command) {
    pid_t child = -1;
    const int failure = spawn_shell(command, nullptr, child);
    if (failure == 0) {
        return wait_for_child(child);
    }
    return failure == EAGAIN || failure == ENOMEM ? -1 : exit_status_of_missing_shell;
}

std::optional<std::string> read_from_shell(const char* command, std::size_t limit) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    UniqueFd output(ends[0]);
    UniqueFd input(ends[1]);
    SpawnActions actions;
    pid_t child = -1;
    if (!actions.send_output_to(input.get()) || spawn_shell(command, actions.get(), child) != 0) {
        return std::nullopt;
    }
    input.reset();
    std::string text = read_up_to(output.get(), limit);
    output.reset();
    wait_for_child(child);
    return text;
}

} // namespace wivex

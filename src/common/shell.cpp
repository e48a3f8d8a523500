#include "common/shell.hpp"

#include "common/console.hpp"
#include "common/interrupts.hpp"
#include "common/waiting.hpp"

#include <signal.h>
#include <spawn.h>

#include <array>
#include <cerrno>

namespace wivex {

namespace {

constexpr int exit_status_of_missing_shell = 127 << 8;

// Attributes of a child that must not inherit our held signals or an ignored SIGINT.
class SpawnAttributes {
public:
    SpawnAttributes() : usable_(posix_spawnattr_init(&attributes_) == 0) {
        if (!usable_) {
            return;
        }
        sigset_t none;
        sigemptyset(&none);
        sigset_t defaults;
        sigemptyset(&defaults);
        // SIGHUP stays as it was inherited: a run under nohup keeps its children too.
        for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGCHLD, SIGALRM}) {
            sigaddset(&defaults, signal);
        }
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &defaults);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() {
        if (usable_) {
            posix_spawnattr_destroy(&attributes_);
        }
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* get() const {
        return usable_ ? &attributes_ : nullptr;
    }

private:
    posix_spawnattr_t attributes_{};
    bool usable_;
};

} // namespace

int run_shell(const char* command) {
    flush_out();
    std::array<char, 3> shell{"sh"};
    std::array<char, 3> option{"-c"};
    std::string text(command);
    const std::array<char*, 4> arguments{shell.data(), option.data(), text.data(), nullptr};
    const SpawnAttributes attributes;
    pid_t child = -1;
    const int failure =
        posix_spawn(&child, "/bin/sh", nullptr, attributes.get(), arguments.data(), environ);
    if (failure == 0) {
        return wait_for_child(child);
    }
    // A caller that tries again without end must stay interruptible.
    let_interrupts_in();
    errno = failure;
    return failure == EAGAIN || failure == ENOMEM ? -1 : exit_status_of_missing_shell;
}

} // namespace wivex
